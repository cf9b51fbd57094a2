#pragma once

#include "platform/linux/x11/ClientWindow.h"

#include <string>
#include <vector>

namespace tavro {

class XConnection;

/// All managed windows at one moment, bottom to top.
struct ClientList {
    /// Three round trips, however many windows there are. Windows that close meanwhile are left out.
    static ClientList read(const XConnection& x);

    const ClientWindow* find(xcb_window_t window) const;
    /// The uppermost window of an application, or of any, that the user has before the eyes; null without
    /// one.
    const ClientWindow* uppermost(const std::optional<std::string>& application = std::nullopt) const;
    bool isOnCurrentWorkspace(const ClientWindow& window) const {
        return window.workspace == ClientWindow::allWorkspaces || window.workspace == currentWorkspace;
    }

    std::vector<ClientWindow> windows;
    std::uint32_t currentWorkspace = 0;
    xcb_window_t active = XCB_NONE;
    /// The window manager knows minimising: tiling ones may not.
    bool canMinimise = true;
    /// The request that read it: what the server reports from an earlier one on is older than the list.
    std::uint32_t moment = 0;
};

/// The application of one window.
std::string applicationOf(const XConnection& x, xcb_window_t window);

} // namespace tavro
