#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tavro {

struct XAtoms;

/// What identifies the application of a window, as the window's properties say it; empty where they say
/// nothing.
struct ApplicationHints {
    std::string gtkApplication, desktopFile, wmClass;
    std::optional<std::uint32_t> leader, pid;
};

/// The rest of what the properties of a managed window say.
struct ClientProperties {
    ApplicationHints application;
    std::vector<std::uint32_t> state, types;
    std::optional<std::uint32_t> workspace, transientFor, mark;
};

/// A managed window as it was when the list was read.
struct ClientWindow {
    /// EWMH, _NET_WM_DESKTOP.
    static constexpr std::uint32_t allWorkspaces = 0xFFFFFFFF;
    /// In the value of a mark, besides the place.
    static constexpr std::uint32_t concealedFlag = 0x80000000;

    static ClientWindow from(xcb_window_t id, const ClientProperties& properties, const XAtoms& atoms);

    xcb_window_t id = XCB_NONE;
    /// Which application it belongs to.
    std::string application;
    std::uint32_t workspace = 0;
    /// Minimised (`_NET_WM_STATE_HIDDEN`; WM_STATE also says iconic for windows of other workspaces).
    bool isMinimised = false;
    /// An application window of its own: no desktop, panel, notification, transient or popover of ours.
    bool isApplicationWindow = false;
    /// It holds the desktop's icons (EWMH, type DESKTOP).
    bool isDesktop = false;
    /// A panel (EWMH, type DOCK).
    bool isPanel = false;
    /// Our mark on a window that we have hidden: where it stood in the stacking order.
    std::optional<std::uint32_t> hiddenMark;
    /// Hidden without being minimised, by the mark.
    bool isConcealed = false;
};

/// The second string of the property WM_CLASS (ICCCM): the class.
std::string className(const std::string& wmClass);

/// The application by the strongest hint; the window itself where there is none.
std::string applicationOf(xcb_window_t window, const ApplicationHints& hints);

} // namespace tavro
