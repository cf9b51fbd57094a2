#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdlib>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

struct Point {
    int x = 0, y = 0;
};

struct Size {
    int width = 0, height = 0;
};

struct Rect {
    int x = 0, y = 0, width = 0, height = 0;

    bool operator==(const Rect&) const = default;
    bool contains(Point point) const {
        return point.x >= x && point.x < x + width && point.y >= y && point.y < y + height;
    }
};

std::ostream& operator<<(std::ostream& stream, const Rect& rect);

/// The colours of an area, row by row; the unused byte is zero.
using Pixels = std::vector<std::uint32_t>;

struct FreeDeleter {
    void operator()(void* pointer) const { std::free(pointer); }
};

/// Owns what the server has sent; null for a window that is gone.
template <class T>
std::unique_ptr<T, FreeDeleter> owned(T* reply) {
    return std::unique_ptr<T, FreeDeleter>(reply);
}

/// The server's own view of the desktop, over a connection of its own.
class XClient {
public:
    XClient();
    ~XClient();
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;

    /// Asks for these events of a window.
    void watch(xcb_window_t window, std::uint32_t eventMask) const;
    /// Returns when the server has reported a change, or after that time.
    void waitForEvent(std::chrono::milliseconds atMost);

    std::vector<Rect> screens() const;
    /// All managed windows, bottom to top.
    std::vector<xcb_window_t> clients() const { return values(root(), "_NET_CLIENT_LIST_STACKING"); }
    /// Those of them that are applications', not of the desktop or a panel.
    std::vector<xcb_window_t> applicationWindows() const;
    xcb_window_t active() const {
        const auto active = values(root(), "_NET_ACTIVE_WINDOW");
        return active.empty() ? xcb_window_t{XCB_NONE} : active.front();
    }
    /// Which window gets the keys: it may come some time after the window manager calls the window active.
    xcb_window_t focus() const;
    std::uint32_t workspace() const { return values(root(), "_NET_CURRENT_DESKTOP").at(0); }
    std::vector<xcb_window_t> children(xcb_window_t window) const;
    /// All windows below the root window, managed or not.
    std::vector<xcb_window_t> topLevelWindows() const { return children(root()); }
    /// The menus that are open; no tooltips.
    std::vector<xcb_window_t> menus() const;

    std::vector<std::uint32_t> values(xcb_window_t window, const std::string& property) const;
    std::string text(xcb_window_t window, const std::string& property) const;
    /// Whether the property holds the atom of that name.
    bool has(xcb_window_t window, const std::string& property, const std::string& atomName) const;
    bool isMinimised(xcb_window_t window) const {
        return has(window, "_NET_WM_STATE", "_NET_WM_STATE_HIDDEN");
    }
    bool isViewable(xcb_window_t window) const;
    Rect place(xcb_window_t window) const;

    Pixels screenshot(const Rect& area) const { return image(root(), area); }
    /// What the desktop's own wallpaper picture shows there; empty where there is none.
    Pixels wallpaper(const Rect& area) const;
    /// How many pixels of the area are not the wallpaper's, where no window but desktops and covers stands.
    std::size_t pixelsBesidesWallpaper(const Rect& area) const;

    // As a taskbar or pager does.
    void minimise(xcb_window_t window) { send(window, "WM_CHANGE_STATE", {3}); }
    void activate(xcb_window_t window) { send(window, "_NET_ACTIVE_WINDOW", {2}); }
    void moveToWorkspace(xcb_window_t window, std::uint32_t number) {
        send(window, "_NET_WM_DESKTOP", {number, 2});
    }
    void switchWorkspace(std::uint32_t number) { send(root(), "_NET_CURRENT_DESKTOP", {number}); }
    void showDesktop(bool shows) { send(root(), "_NET_SHOWING_DESKTOP", {shows ? 1u : 0u}); }

    /// Takes a key with these modifiers, as a program with a shortcut does; false where another one has it.
    bool grab(xcb_keycode_t keycode, std::uint16_t modifiers);
    void ungrab(xcb_keycode_t keycode, std::uint16_t modifiers);
    /// Takes the whole keyboard, as an open menu does; whether it got it.
    bool grabKeyboard();
    void ungrabKeyboard();
    /// The keys that were pressed while we had the keyboard or that key.
    const std::vector<xcb_keycode_t>& keysSeen() const { return m_keysSeen; }
    /// Those that are shown outside the window manager's care, of a process and a size.
    std::vector<xcb_window_t> topWindows(pid_t process, Size size) const;

    xcb_connection_t* raw() const { return m_connection; }
    xcb_window_t root() const { return m_screen->root; }

    xcb_atom_t atom(const std::string& name) const;
    /// The window with the window manager's decoration.
    xcb_window_t frame(xcb_window_t window) const;

private:
    void send(xcb_window_t window, const std::string& type, std::initializer_list<std::uint32_t> data);
    Pixels image(xcb_drawable_t drawable, const Rect& area) const;

    xcb_connection_t* m_connection;
    xcb_screen_t* m_screen;
    mutable std::map<std::string, xcb_atom_t> m_atoms;
    std::vector<xcb_keycode_t> m_keysSeen;
};
