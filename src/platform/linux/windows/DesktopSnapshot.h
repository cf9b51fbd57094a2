#pragma once

#include "platform/linux/process/OncePerTurn.h"
#include "platform/linux/windows/CoverPanes.h"
#include "platform/linux/x11/ClientList.h"

#include <memory>
#include <optional>
#include <vector>

namespace tavro {

class XConnection;

/// The desktop's background as the server has it, which desktops leave under `_XROOTPMAP_ID`.
struct RootPixmap {
    xcb_pixmap_t number = XCB_NONE;
    std::uint8_t depth = 0;
    /// As large as the root window.
    bool isWhole = false;
};

/// All that hiding and covering need to know of the desktop, at one moment. Once windows are being hidden,
/// each further question would wait behind the window manager's work.
struct DesktopSnapshot {
    /// Four round trips, however many windows there are.
    static DesktopSnapshot read(const XConnection& x);
    /// Places and depths of such windows, in one round trip. Those that are gone are left out.
    static std::vector<DesktopWindow> placesOf(const XConnection& x,
                                               const std::vector<xcb_window_t>& desktopWindows);

    ClientList clients;
    std::vector<DesktopWindow> desktopWindows;
    std::optional<RootPixmap> wallpaper;
};

/// The newest snapshot; it holds for the rest of the turn of the main queue in which it was read.
class DesktopSnapshots {
public:
    DesktopSnapshots(const XConnection& x, MainQueue& queue)
        : m_x(x)
        , m_forgetting(queue, [this] { m_current.reset(); }) {}

    std::shared_ptr<const DesktopSnapshot> read();
    /// That of this turn, read where there is none yet.
    std::shared_ptr<const DesktopSnapshot> current() { return m_current ? m_current : read(); }

private:
    const XConnection& m_x;
    std::shared_ptr<const DesktopSnapshot> m_current;
    OncePerTurn m_forgetting;
};

} // namespace tavro
