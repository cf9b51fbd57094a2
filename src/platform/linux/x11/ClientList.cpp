#include "platform/linux/x11/ClientList.h"

#include "platform/linux/x11/XConnection.h"

#include <algorithm>

namespace tavro {

namespace {

/// Requests what identifies the application of a window; the answers are collected later. Every one is
/// fetched, wanted or not: what is left would stay in the queue.
class HintsRequest {
public:
    HintsRequest(const XConnection& x, xcb_window_t window)
        : m_x(x)
        , m_desktopFile(x.request(window, x.atoms().kdeNetWmDesktopFile))
        , m_gtkApplication(x.request(window, x.atoms().gtkApplicationId))
        , m_wmClass(x.request(window, XCB_ATOM_WM_CLASS))
        , m_leader(x.request(window, x.atoms().wmClientLeader))
        , m_pid(x.request(window, x.atoms().netWmPid)) {}

    ApplicationHints answer() const {
        return {m_x.text(m_gtkApplication), m_x.text(m_desktopFile), m_x.text(m_wmClass), m_x.value(m_leader),
                m_x.value(m_pid)};
    }

private:
    const XConnection& m_x;
    xcb_get_property_cookie_t m_desktopFile, m_gtkApplication, m_wmClass, m_leader, m_pid;
};

class WindowRequest {
public:
    WindowRequest(const XConnection& x, xcb_window_t window)
        : m_x(x)
        , m_window(window)
        , m_hints(x, window)
        , m_workspace(x.request(window, x.atoms().netWmDesktop))
        , m_state(x.request(window, x.atoms().netWmState))
        , m_types(x.request(window, x.atoms().netWmWindowType))
        , m_transientFor(x.request(window, XCB_ATOM_WM_TRANSIENT_FOR))
        , m_mark(x.request(window, x.atoms().tavroHidden)) {}

    ClientWindow answer() const {
        return ClientWindow::from(m_window,
                                  {m_hints.answer(), m_x.values(m_state), m_x.values(m_types),
                                   m_x.value(m_workspace), m_x.value(m_transientFor), m_x.value(m_mark)},
                                  m_x.atoms());
    }

private:
    const XConnection& m_x;
    xcb_window_t m_window;
    HintsRequest m_hints;
    xcb_get_property_cookie_t m_workspace, m_state, m_types, m_transientFor, m_mark;
};

} // namespace

ClientList ClientList::read(const XConnection& x) {
    const auto stacking = x.request(x.root(), x.atoms().netClientListStacking);
    const auto workspace = x.request(x.root(), x.atoms().netCurrentDesktop);
    const auto active = x.request(x.root(), x.atoms().netActiveWindow);
    const auto supported = x.request(x.root(), x.atoms().netSupported);
    std::vector<WindowRequest> requests;
    for (const auto window : x.values(stacking))
        requests.emplace_back(x, window);
    ClientList list;
    for (const auto& request : requests)
        list.windows.push_back(request.answer());
    list.currentWorkspace = x.value(workspace).value_or(0);
    list.active = x.value(active).value_or(XCB_NONE);
    list.canMinimise = std::ranges::count(x.values(supported), x.atoms().netWmActionMinimize) > 0;
    list.moment = stacking.sequence;
    return list;
}

const ClientWindow* ClientList::find(xcb_window_t window) const {
    const auto found = std::ranges::find(windows, window, &ClientWindow::id);
    return found == windows.end() ? nullptr : &*found;
}

const ClientWindow* ClientList::uppermost(const std::optional<std::string>& application) const {
    const auto found = std::find_if(windows.rbegin(), windows.rend(), [&](const auto& window) {
        return window.isApplicationWindow && !window.isMinimised && isOnCurrentWorkspace(window) &&
               window.application == application.value_or(window.application);
    });
    return found == windows.rend() ? nullptr : &*found;
}

std::string applicationOf(const XConnection& x, xcb_window_t window) {
    return applicationOf(window, HintsRequest(x, window).answer());
}

} // namespace tavro
