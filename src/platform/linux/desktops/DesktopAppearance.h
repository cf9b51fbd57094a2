#pragma once

#include "platform/process/ObserverList.h"

#include <xcb/xcb.h>

#include <optional>
#include <string>

class QFont;

namespace tavro {

class XConnection;

/// Makes the toolkit look like the rest of the desktop, now and whenever that changes: in its font, and dark
/// where its theme is. The toolkit itself knows neither without a plugin for the desktop.
class DesktopAppearance {
public:
    /// The toolkit's application must exist.
    explicit DesktopAppearance(XConnection& x);

    /// Of a name as Pango writes it, such as "Sans Bold 10"; none where it names no size.
    static std::optional<QFont> fontOf(const std::string& description);

private:
    void findSettings();
    void apply();

    XConnection& m_x;
    xcb_atom_t m_selection, m_property;
    xcb_window_t m_owner = XCB_NONE;
    bool m_isDark = false;
    Observation m_newSettings, m_changes;
};

} // namespace tavro
