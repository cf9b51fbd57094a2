#pragma once

#include "platform/linux/x11/XConnection.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tavro {

/// A managed window as it was when the list was read.
struct ClientWindow {
    xcb_window_t id = XCB_NONE;
    /// Which application it belongs to.
    std::string application;
    std::uint32_t workspace = 0;
    /// Minimised (`_NET_WM_STATE_HIDDEN`; WM_STATE also says iconic for windows of other workspaces).
    bool isMinimised = false;
    /// An application window of its own: no desktop, panel, notification or transient.
    bool isApplicationWindow = false;
    bool canMinimise = false;
    /// Our mark on a window that we have hidden: where it stood in the stacking order.
    std::optional<std::uint32_t> hiddenMark;
};

/// All managed windows at one moment, bottom to top.
struct ClientList {
    static constexpr std::uint32_t allWorkspaces = 0xFFFFFFFF;

    /// Three round trips, however many windows there are. Windows that close meanwhile are left out.
    static ClientList read(const XConnection& x);

    const ClientWindow* find(xcb_window_t window) const;
    bool isOnCurrentWorkspace(const ClientWindow& window) const {
        return window.workspace == allWorkspaces || window.workspace == currentWorkspace;
    }

    std::vector<ClientWindow> windows;
    std::uint32_t currentWorkspace = 0;
    xcb_window_t active = XCB_NONE;
};

/// The second string of the property WM_CLASS (ICCCM): the class.
std::string className(const std::string& wmClass);

/// The application of one window, by the strongest hint that it carries; the window itself where it has none.
std::string applicationOf(const XConnection& x, xcb_window_t window);

} // namespace tavro
