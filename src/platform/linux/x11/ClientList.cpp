#include "platform/linux/x11/ClientList.h"

#include <algorithm>
#include <array>

namespace tavro {

namespace {

/// Requests what tells the application of a window; the answers are collected later.
class ApplicationRequest {
public:
    ApplicationRequest(const XConnection& x, xcb_window_t window)
        : m_x(x)
        , m_window(window)
        , m_desktopFile(x.request(window, x.atoms().kdeNetWmDesktopFile))
        , m_gtkApplication(x.request(window, x.atoms().gtkApplicationId))
        , m_wmClass(x.request(window, XCB_ATOM_WM_CLASS))
        , m_leader(x.request(window, x.atoms().wmClientLeader))
        , m_pid(x.request(window, x.atoms().netWmPid)) {}

    // Every answer is fetched, wanted or not: what is left would stay in the queue.
    std::string answer() const {
        const std::array hints{m_x.text(m_gtkApplication), m_x.text(m_desktopFile),
                               className(m_x.text(m_wmClass)), number("leader", m_leader),
                               number("pid", m_pid)};
        const auto hint = std::ranges::find_if(hints, [](const auto& text) { return !text.empty(); });
        return hint == hints.end() ? "window " + std::to_string(m_window) : *hint;
    }

private:
    std::string number(const char* kind, xcb_get_property_cookie_t cookie) const {
        const auto value = m_x.value(cookie);
        return value ? kind + std::string(" ") + std::to_string(*value) : std::string();
    }

    const XConnection& m_x;
    xcb_window_t m_window;
    xcb_get_property_cookie_t m_desktopFile, m_gtkApplication, m_wmClass, m_leader, m_pid;
};

class WindowRequest {
public:
    WindowRequest(const XConnection& x, xcb_window_t window)
        : m_x(x)
        , m_window(window)
        , m_application(x, window)
        , m_workspace(x.request(window, x.atoms().netWmDesktop))
        , m_state(x.request(window, x.atoms().netWmState))
        , m_type(x.request(window, x.atoms().netWmWindowType))
        , m_transientFor(x.request(window, XCB_ATOM_WM_TRANSIENT_FOR))
        , m_actions(x.request(window, x.atoms().netWmAllowedActions))
        , m_mark(x.request(window, x.atoms().tavroHidden)) {}

    ClientWindow answer() const {
        const auto& atoms = m_x.atoms();
        ClientWindow window;
        window.id = m_window;
        window.application = m_application.answer();
        window.workspace = m_x.value(m_workspace).value_or(ClientList::allWorkspaces);
        const auto state = m_x.values(m_state);
        const auto types = m_x.values(m_type);
        const auto actions = m_x.values(m_actions);
        const bool isTransient = m_x.value(m_transientFor).value_or(XCB_NONE) != XCB_NONE;
        window.isMinimised = contains(state, atoms.netWmStateHidden);
        window.isApplicationWindow =
            !isTransient && !contains(state, atoms.netWmStateSkipTaskbar) && !hasOtherType(types);
        window.canMinimise = actions.empty() || contains(actions, atoms.netWmActionMinimize);
        window.hiddenMark = m_x.value(m_mark);
        return window;
    }

private:
    static bool contains(const std::vector<std::uint32_t>& values, std::uint32_t value) {
        return std::ranges::find(values, value) != values.end();
    }

    bool hasOtherType(const std::vector<std::uint32_t>& types) const {
        const auto& atoms = m_x.atoms();
        const std::array others{atoms.netWmWindowTypeDesktop,      atoms.netWmWindowTypeDock,
                                atoms.netWmWindowTypeNotification, atoms.netWmWindowTypeSplash,
                                atoms.netWmWindowTypeMenu,         atoms.netWmWindowTypeToolbar};
        return std::ranges::find_first_of(types, others) != types.end();
    }

    const XConnection& m_x;
    xcb_window_t m_window;
    ApplicationRequest m_application;
    xcb_get_property_cookie_t m_workspace, m_state, m_type, m_transientFor, m_actions, m_mark;
};

} // namespace

ClientList ClientList::read(const XConnection& x) {
    const auto stacking = x.request(x.root(), x.atoms().netClientListStacking);
    const auto workspace = x.request(x.root(), x.atoms().netCurrentDesktop);
    const auto active = x.request(x.root(), x.atoms().netActiveWindow);
    std::vector<WindowRequest> requests;
    for (const auto window : x.values(stacking))
        requests.emplace_back(x, window);
    ClientList list;
    for (const auto& request : requests)
        list.windows.push_back(request.answer());
    list.currentWorkspace = x.value(workspace).value_or(0);
    list.active = x.value(active).value_or(XCB_NONE);
    return list;
}

const ClientWindow* ClientList::find(xcb_window_t window) const {
    const auto found = std::ranges::find(windows, window, &ClientWindow::id);
    return found == windows.end() ? nullptr : &*found;
}

std::string className(const std::string& wmClass) {
    const auto end = wmClass.find('\0');
    return end == std::string::npos ? wmClass : std::string(wmClass.c_str() + end + 1);
}

std::string applicationOf(const XConnection& x, xcb_window_t window) {
    return ApplicationRequest(x, window).answer();
}

} // namespace tavro
