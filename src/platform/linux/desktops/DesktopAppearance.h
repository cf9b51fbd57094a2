#pragma once

#include "platform/linux/desktops/ColorScheme.h"
#include "platform/linux/desktops/DesktopLook.h"
#include "platform/linux/process/Background.h"
#include "platform/process/ObserverList.h"
#include "toolkit/Look.h"

#include <QFileSystemWatcher>
#include <QTimer>
#include <xcb/xcb.h>

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace tavro {

class XConnection;

/// Makes the toolkit look like the rest of the desktop, now and whenever that changes: in its font, and dark
/// or with high contrast where its theme is. The toolkit itself knows none of it without a plugin for the
/// desktop. Most desktops tell all programs (XSETTINGS, the portal); the others are asked for their settings,
/// on a thread of its own.
class DesktopAppearance {
public:
    /// Runs on that thread.
    using Question = std::function<std::optional<DesktopLook>()>;

    /// The file is the one where the answer stands: see `Desktop`. The toolkit's application must exist.
    DesktopAppearance(XConnection& x, Question question, const QString& file);

    /// Of a name as Pango writes it, such as "Sans Bold 10"; none where it names no size.
    static std::optional<QFont> fontOf(const std::string& description);

private:
    void findSettings();
    void readSettings();
    void ask();
    void apply();
    void show();

    XConnection& m_x;
    xcb_atom_t m_selection, m_property;
    xcb_window_t m_owner = XCB_NONE;
    std::map<std::string, std::string> m_settings;
    const Question m_question;
    const QString m_file;
    DesktopLook m_own;
    std::optional<Look> m_look; // what shows
    Observation m_newSettings, m_changes;
    ColorScheme m_scheme;
    std::optional<QFileSystemWatcher> m_watcher;
    QTimer m_soon;
    Background m_background;
};

} // namespace tavro
