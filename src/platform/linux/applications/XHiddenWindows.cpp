#include "platform/linux/applications/XHiddenWindows.h"

#include "platform/linux/x11/Concealment.h"
#include "platform/process/Log.h"
#include "platform/process/MainQueue.h"

#include <algorithm>

namespace tavro {

namespace {

constexpr std::uint32_t iconicState = 3; // ICCCM, WM_CHANGE_STATE
constexpr std::uint32_t fromPager = 2; // EWMH, source indication: the only one that all window managers obey
constexpr std::uint32_t removeState = 0; // EWMH, _NET_WM_STATE
constexpr std::chrono::milliseconds margin{50};

HiddenWindows::Time now() {
    return std::chrono::steady_clock::now();
}

} // namespace

XHiddenWindows::XHiddenWindows(XConnection& x, DesktopSnapshots& snapshots, WindowManagerSync& windowManager,
                               MainQueue& queue, Log& log)
    : m_x(x)
    , m_snapshots(snapshots)
    , m_windowManager(windowManager)
    , m_queue(queue)
    , m_log(log)
    , m_restoring(queue, [this] { restore(); })
    , m_lookingAtFront(queue, [this] { lookAtFront(); })
    , m_followingStates(queue, [this] { followStates(); })
    , m_askingWhenCarriedOut(queue, [this] { askWhenCarriedOut(); })
    , m_events{
          x.on(XEvents::destroyNotify,
               [this](const auto& event) {
                   m_model.destroyed(event.window, m_x.requestBeforeEvent());
                   send();
               }),
          x.on(XEvents::propertyNotify,
               [this](const auto& event) {
                   if (event.atom != m_x.atoms().netWmState || !m_model.follows(event.window))
                       return;
                   m_changedStates.insert(event.window);
                   m_followingStates.schedule();
               }),
          x.onPropertyChange(x.root(), x.atoms().netCurrentDesktop, [this] { arrived(); }),
          x.onPropertyChange(x.root(), x.atoms().netActiveWindow,
                             [this] {
                                 if (m_model.isSettling(now()))
                                     m_lookingAtFront.schedule();
                             }),
          windowManager.onReplacement([this] {
              m_model.windowManagerChanged();
              m_askingWhenCarriedOut.schedule();
          }),
      } {}

std::shared_ptr<const ClientList> XHiddenWindows::readClients() {
    const auto snapshot = m_snapshots.read();
    return {snapshot, &snapshot->clients};
}

std::shared_ptr<const ClientList> XHiddenWindows::clients() {
    const auto snapshot = m_snapshots.current();
    return {snapshot, &snapshot->clients};
}

void XHiddenWindows::hide(const std::string& application) {
    m_model.hide(application, *clients());
    write(); // sent with what else this turn asks for: each sending wakes the server up
}

void XHiddenWindows::unhide(const std::string& application) {
    m_model.unhide(application);
    m_restoring.schedule();
}

void XHiddenWindows::stopHiding() {
    m_model.stopHiding();
    send();
}

void XHiddenWindows::restore() {
    m_model.restore(*clients());
    if (!send())
        return;
    followSettling();
    // Also for those of which nothing was asked: a process before may have done so.
    m_askingWhenCarriedOut.schedule();
}

void XHiddenWindows::bringToFront(xcb_window_t window) {
    m_restoring.doNow();
    m_model.bringToFront(window, now());
    send();
    followSettling();
}

// Some window managers, such as xfwm4, take the window that is about to lose the focus for the one that has
// it, and then do nothing when that one is to be activated. So it is looked at, and asked for, more than
// once.
void XHiddenWindows::followSettling() {
    const auto settling = m_model.settlingTime();
    for (const auto delay : {settling / 5, settling / 2, settling - margin, settling})
        m_queue.asyncAfter(delay, [weak = weak_from_this()] {
            if (const auto self = weak.lock())
                self->lookAtFront();
        });
}

xcb_window_t XHiddenWindows::front(xcb_window_t active) const {
    return m_model.front(active, now());
}

void XHiddenWindows::lookAtFront() {
    if (m_model.isSettling(now()))
        m_model.activeIs(m_x.value(m_x.request(m_x.root(), m_x.atoms().netActiveWindow)).value_or(XCB_NONE),
                         now());
    send();
}

/// The last look is enough: until then there are requests that are not carried out.
void XHiddenWindows::askWhenCarriedOut() {
    ++m_outstanding;
    m_windowManager.whenCarriedOut([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self || --self->m_outstanding > 0)
            return;
        self->m_model.carriedOut(*self->readClients());
        self->send();
    });
}

void XHiddenWindows::settle() {
    m_restoring.doNow();
    for (lookAtFront(); m_model.isSettling(now()); lookAtFront())
        m_x.waitForEvents(margin);
}

void XHiddenWindows::finish() {
    settle();
    m_askingWhenCarriedOut.doNow();
    for (const auto end = now() + m_model.settlingTime(); m_outstanding > 0 && now() < end;)
        m_x.waitForEvents(margin);
    if (m_outstanding > 0)
        m_model.carriedOut(*readClients()); // or it never comes to that
    bringBackInPlace();
    m_x.roundTrip();
}

// What was asked of the window manager is looked at afterwards: not all obey, and some do more than was
// asked.
void XHiddenWindows::bringBackInPlace() {
    bool haveReturned = m_model.haveReturned(*readClients());
    for (const auto way : HiddenWindows::waysInPlace) {
        if (!haveReturned)
            m_model.bringBackInPlace(way, *clients());
        send();
        for (const auto end = now() + m_model.settlingTime(); !haveReturned && now() < end; send()) {
            m_x.waitForEvents(margin);
            haveReturned = m_model.haveReturned(*readClients());
        }
    }
    if (!haveReturned)
        m_log.diagnose("Windows stay hidden: the window manager does not bring them back");
}

void XHiddenWindows::followStates() {
    std::vector<std::pair<xcb_window_t, xcb_get_property_cookie_t>> requests;
    for (const auto window : std::exchange(m_changedStates, {}))
        requests.emplace_back(window, m_x.request(window, m_x.atoms().netWmState));
    for (const auto& [window, request] : requests) {
        const auto state = m_x.values(request);
        m_model.stateIs(window, std::ranges::find(state, m_x.atoms().netWmStateHidden) != state.end());
    }
    send();
}

void XHiddenWindows::arrived() {
    m_model.arrived(*readClients(), now());
    if (send())
        followSettling();
}

bool XHiddenWindows::send() {
    const bool wasAny = write();
    m_x.flush();
    return wasAny;
}

bool XHiddenWindows::write() {
    for (const auto& complaint : m_model.takeComplaints())
        m_log.diagnose(complaint);
    const auto commands = m_model.takeCommands();
    for (const auto& command : commands)
        send(command);
    if (std::ranges::any_of(commands,
                            [](const auto& command) { return command.what >= Command::What::minimise; }))
        m_askingWhenCarriedOut.schedule();
    return !commands.empty();
}

void XHiddenWindows::send(const Command& command) {
    using What = Command::What;
    const auto& atoms = m_x.atoms();
    const auto& [what, window, value] = command;
    const std::uint32_t above = XCB_STACK_MODE_ABOVE;
    switch (what) {
    case What::watch:
        return select(window, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    case What::unwatch:
        return select(window, XCB_EVENT_MASK_NO_EVENT);
    case What::mark:
        xcb_change_property(m_x.raw(), XCB_PROP_MODE_REPLACE, window, atoms.tavroHidden, XCB_ATOM_CARDINAL,
                            32, 1, &value);
        return;
    case What::unmark:
        xcb_delete_property(m_x.raw(), window, atoms.tavroHidden);
        return;
    case What::conceal:
        return tavro::conceal(m_x, window, m_x.topLevelOf(window));
    case What::reveal:
        return tavro::reveal(m_x, window, m_x.topLevelOf(window));
    case What::minimise:
        return m_x.askWindowManager(window, atoms.wmChangeState, {iconicState});
    case What::activate:
        return m_x.askWindowManager(window, atoms.netActiveWindow, {fromPager, XCB_CURRENT_TIME, XCB_NONE});
    case What::raise:
        xcb_configure_window(m_x.raw(), window, XCB_CONFIG_WINDOW_STACK_MODE, &above);
        return;
    case What::clearHidden:
        return m_x.askWindowManager(window, atoms.netWmState,
                                    {removeState, atoms.netWmStateHidden, XCB_NONE, fromPager});
    case What::map:
        xcb_map_window(m_x.raw(), window);
        return;
    case What::moveTo:
        return m_x.askWindowManager(window, atoms.netWmDesktop, {value, fromPager});
    }
}

void XHiddenWindows::select(xcb_window_t window, std::uint32_t events) {
    xcb_change_window_attributes(m_x.raw(), window, XCB_CW_EVENT_MASK, &events);
}

} // namespace tavro
