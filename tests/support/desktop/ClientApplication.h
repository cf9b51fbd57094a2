#pragma once

#include "XServer.h"

/// An application of the test's own: windows of one class over one connection. They are gone when the scope
/// ends.
class ClientApplication {
public:
    ClientApplication(XServer& server, std::string name);
    ~ClientApplication();
    ClientApplication(const ClientApplication&) = delete;
    ClientApplication& operator=(const ClientApplication&) = delete;

    /// Shows a window and returns when the window manager has it and it is in front.
    xcb_window_t addWindow(const Rect& place);
    /// Shows that many small windows at once and returns when the window manager has them all.
    std::vector<xcb_window_t> addWindows(int count);
    /// Shows a notification, as servers do it: by a window that the window manager does not manage.
    xcb_window_t addBubble(const Rect& place);
    /// Without waiting for anything.
    void destroy(xcb_window_t window);

private:
    testing::AssertionResult isInFront(xcb_window_t window);
    xcb_window_t create(const Rect& place, bool isManaged);
    xcb_window_t show(const Rect& place);

    XServer& m_server;
    std::string m_name;
    xcb_connection_t* m_connection;
};
