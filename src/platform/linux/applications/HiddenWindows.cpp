#include "platform/linux/applications/HiddenWindows.h"

#include "platform/process/Log.h"
#include "platform/process/MainQueue.h"

#include <algorithm>

namespace tavro {

namespace {
constexpr std::uint32_t iconicState = 3; // ICCCM, WM_CHANGE_STATE
constexpr std::uint32_t fromPager = 2; // EWMH, source indication: the only one that all window managers obey
constexpr std::chrono::milliseconds longestSettling{700}, settlingOfEach{10}, margin{50};
} // namespace

HiddenWindows::HiddenWindows(XConnection& x, MainQueue& queue, Log& log)
    : m_x(x)
    , m_queue(queue)
    , m_log(log)
    , m_restoring(queue, [this] { restoreMarked(); })
    , m_keepingInFront(queue, [this] { keepInFront(); })
    , m_followingStates(queue, [this] { followStates(); })
    , m_workspace(x.value(x.request(x.root(), x.atoms().netCurrentDesktop)).value_or(0))
    , m_events{
          x.on(XEvents::destroyNotify, [this](const auto& event) { m_minimised.erase(event.window); }),
          x.on(XEvents::propertyNotify, [this](const auto& event) { stateChanged(event); }),
          x.onPropertyChange(x.root(), x.atoms().netCurrentDesktop, [this] { arrived(); }),
          x.onPropertyChange(x.root(), x.atoms().netActiveWindow,
                             [this] {
                                 if (isSettling())
                                     m_keepingInFront.schedule();
                             }),
      } {}

std::shared_ptr<const ClientList> HiddenWindows::readClients() {
    if (!m_clients)
        m_queue.async([this] { m_clients.reset(); });
    m_clients = std::make_shared<const ClientList>(ClientList::read(m_x));
    return m_clients;
}

std::shared_ptr<const ClientList> HiddenWindows::clients() {
    return m_clients ? m_clients : readClients();
}

void HiddenWindows::hide(const std::string& application) {
    const auto list = clients();
    m_broughtBack.clear();
    if (m_hiddenApplications.empty()) {
        m_stackingAtHide.clear();
        std::ranges::transform(list->windows, std::back_inserter(m_stackingAtHide), &ClientWindow::id);
    }
    m_hiddenApplications.insert(application);
    m_unhiddenApplications.erase(application);
    std::uint32_t place = 0;
    for (const auto& window : list->windows) {
        const bool isVisible = list->isOnCurrentWorkspace(window) && !window.isMinimised;
        if (window.application == application && window.isApplicationWindow && isVisible)
            minimise(window, place);
        ++place;
    }
    m_x.flush();
}

void HiddenWindows::minimise(const ClientWindow& window, std::uint32_t place) {
    if (!window.canMinimise) {
        m_log.diagnose("A window of \"" + window.application + "\" cannot be minimised and stays");
        return;
    }
    watch(window.id, true);
    // The mark first: from here on a crash cannot lose the window.
    xcb_change_property(m_x.raw(), XCB_PROP_MODE_REPLACE, window.id, m_x.atoms().tavroHidden,
                        XCB_ATOM_CARDINAL, 32, 1, &place);
    m_x.tellWindowManager(window.id, m_x.atoms().wmChangeState, {iconicState});
    m_minimised.emplace(window.id, false);
}

void HiddenWindows::unhide(const std::string& application) {
    m_hiddenApplications.erase(application);
    m_unhiddenApplications.insert(application);
    m_restoring.schedule();
}

// Activation raises: done from the bottom to the top it gives the former stacking order. The windows that
// stayed are raised in their turn, or those that come back would all end above them.
void HiddenWindows::restoreMarked() {
    const auto list = readClients();
    m_workspace = list->currentWorkspace; // the user may have moved before the notice of it arrives
    std::multimap<std::uint32_t, const ClientWindow*> byPlace;
    bool anyMarked = false;
    for (const auto& window : list->windows) {
        const auto known = std::ranges::find(m_stackingAtHide, window.id);
        if (!list->isOnCurrentWorkspace(window) || (!window.hiddenMark && known == m_stackingAtHide.end()))
            continue;
        const auto place = static_cast<std::uint32_t>(known - m_stackingAtHide.begin());
        byPlace.emplace(window.hiddenMark.value_or(place), &window);
        anyMarked = anyMarked || window.hiddenMark;
    }
    if (!anyMarked)
        return;
    for (const auto& [place, window] : byPlace) {
        if (window->hiddenMark)
            restore(*window);
        else
            raise(*window);
    }
    m_x.flush();
}

void HiddenWindows::restore(const ClientWindow& window) {
    if (!m_unhiddenApplications.contains(window.application))
        return;
    // One that this process has just asked to minimise may not be so yet; of one that a process before has
    // marked only the state tells whether the user has brought it back meanwhile.
    const bool isOurs = window.isMinimised || m_minimised.contains(window.id);
    removeMark(window.id);
    if (!isOurs)
        return;
    activate(window.id);
    m_broughtBack.insert(window.id);
    m_lastBroughtBack = window.id;
}

void HiddenWindows::raise(const ClientWindow& window) const {
    if (!window.isApplicationWindow || window.isMinimised)
        return;
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(m_x.raw(), window.id, XCB_CONFIG_WINDOW_STACK_MODE, &above);
}

void HiddenWindows::bringToFront(xcb_window_t window) {
    restore();
    m_front = window;
    const auto settling = longestSettling + settlingOfEach * m_broughtBack.size();
    m_settlingEnds = std::chrono::steady_clock::now() + settling;
    activate(window);
    for (const auto delay : {settling / 5, settling / 2, settling - margin})
        m_queue.asyncAfter(delay, [weak = weak_from_this()] {
            if (const auto self = weak.lock())
                self->keepInFront();
        });
}

// A window manager that learns of a change of focus later than it was asked for takes the window in front for
// the one that has it still, and leaves the focus where it was last. So the request is made again as long as
// one of those brought back has the focus, until the uppermost of them has had it and the front window has it
// again.
void HiddenWindows::keepInFront() {
    if (!isSettling())
        return;
    const auto active = activeWindow();
    if (active == m_lastBroughtBack)
        m_lastBroughtBack = XCB_NONE;
    if (m_broughtBack.contains(active))
        activate(m_front);
    else if (active == m_front && m_lastBroughtBack == XCB_NONE)
        m_broughtBack.clear();
}

xcb_window_t HiddenWindows::activeWindow() const {
    return m_x.value(m_x.request(m_x.root(), m_x.atoms().netActiveWindow)).value_or(XCB_NONE);
}

bool HiddenWindows::isSettling() const {
    return !m_broughtBack.empty() && std::chrono::steady_clock::now() < m_settlingEnds;
}

void HiddenWindows::settle() {
    for (keepInFront(); isSettling(); keepInFront())
        m_x.waitForEvents(margin);
    m_broughtBack.clear();
}

void HiddenWindows::activate(xcb_window_t window) const {
    m_x.tellWindowManager(window, m_x.atoms().netActiveWindow, {fromPager, XCB_CURRENT_TIME, XCB_NONE});
    xcb_flush(m_x.raw());
}

void HiddenWindows::removeMark(xcb_window_t window) {
    watch(window, false);
    xcb_delete_property(m_x.raw(), window, m_x.atoms().tavroHidden);
    m_minimised.erase(window);
}

void HiddenWindows::watch(xcb_window_t window, bool changes) const {
    const std::uint32_t mask =
        changes ? XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY : XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(m_x.raw(), window, XCB_CW_EVENT_MASK, &mask);
}

void HiddenWindows::stateChanged(const xcb_property_notify_event_t& event) {
    if (event.atom != m_x.atoms().netWmState || !m_minimised.contains(event.window))
        return;
    m_changedStates.insert(event.window);
    m_followingStates.schedule();
}

/// Follows the hidden windows, so that one that the user has brought back meanwhile is the user's again.
void HiddenWindows::followStates() {
    std::vector<std::pair<xcb_window_t, xcb_get_property_cookie_t>> requests;
    for (const auto window : std::exchange(m_changedStates, {}))
        requests.emplace_back(window, m_x.request(window, m_x.atoms().netWmState));
    for (const auto& [window, request] : requests) {
        const auto state = m_x.values(request);
        stateIs(window, std::ranges::find(state, m_x.atoms().netWmStateHidden) != state.end());
    }
    m_x.flush();
}

void HiddenWindows::stateIs(xcb_window_t window, bool isMinimised) {
    const auto entry = m_minimised.find(window);
    if (entry == m_minimised.end())
        return;
    if (isMinimised)
        entry->second = true;
    else if (entry->second)
        removeMark(window);
}

/// The user came to a workspace.
void HiddenWindows::arrived() {
    const auto list = readClients();
    if (std::exchange(m_workspace, list->currentWorkspace) == list->currentWorkspace)
        return;
    const auto applications = m_hiddenApplications;
    for (const auto& application : applications)
        hide(application);
    const auto waits = [&](const auto& window) {
        return window.hiddenMark && list->isOnCurrentWorkspace(window) &&
               m_unhiddenApplications.contains(window.application);
    };
    if (std::ranges::none_of(list->windows, waits))
        return;
    m_restoring.schedule();
    const auto* active = list->find(list->active);
    if (active && active->isApplicationWindow)
        bringToFront(active->id);
    else
        restore();
}

} // namespace tavro
