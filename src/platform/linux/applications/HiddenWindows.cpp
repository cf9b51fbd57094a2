#include "platform/linux/applications/HiddenWindows.h"

#include <algorithm>

namespace tavro {

namespace {
constexpr std::chrono::milliseconds longestSettling{700}, settlingOfEach{40};
constexpr int mostRequests = 3;
} // namespace

void HiddenWindows::hide(const std::string& application, const ClientList& list) {
    if (!std::exchange(m_isHiding, true))
        recordStacking(list);
    m_broughtBack.clear();
    m_unhidden.erase(application);
    for (const auto& window : list.windows)
        if (window.application == application && window.isApplicationWindow)
            hide(window, list);
}

// While windows still come back, the order is on its way to the one that we have asked for.
void HiddenWindows::recordStacking(const ClientList& list) {
    const auto isReturning = [](const auto& entry) {
        return entry.second.stage == Stage::returning && !entry.second.isGivenUp();
    };
    if (std::ranges::none_of(m_entries, isReturning))
        m_stacking.clear();
    for (const auto& window : list.windows)
        place(window.id);
}

void HiddenWindows::hide(const ClientWindow& window, const ClientList& list) {
    auto* entry = find(window.id);
    // The list still says minimised of one that we have just asked back.
    const bool isReturning = entry && entry->stage == Stage::returning;
    if (entry && entry->isHidden())
        entry->stage = Stage::hidden;
    else if (!list.canMinimise && !window.isMinimised)
        conceal(window, list.moment);
    else if (isReturning || (!window.isMinimised && list.isOnCurrentWorkspace(window)))
        minimise(window, list.moment);
    else if (!window.isMinimised)
        follow(window, list.moment, Stage::due);
}

void HiddenWindows::minimise(const ClientWindow& window, std::uint32_t moment) {
    follow(window, moment, Stage::hidden).requests = 1;
    // The mark first: from here on a crash cannot lose the window.
    send(What::mark, window.id, place(window.id));
    send(What::minimise, window.id);
}

// It stays where it is, on whichever workspace, and nobody moves it or takes its focus for that.
void HiddenWindows::conceal(const ClientWindow& window, std::uint32_t moment) {
    follow(window, moment, Stage::hidden).isConcealed = true;
    send(What::mark, window.id, place(window.id) | ClientWindow::concealedFlag);
    send(What::conceal, window.id);
}

void HiddenWindows::reveal(const ClientWindow& window) {
    send(What::reveal, window.id);
    release(window.id);
}

void HiddenWindows::unhide(const std::string& application) {
    m_unhidden.insert(application);
}

void HiddenWindows::stopHiding() {
    m_isHiding = false;
    const auto entries = m_entries;
    for (const auto& [window, entry] : entries)
        if (entry.stage == Stage::due)
            forget(window);
}

// Activation raises: done from the bottom to the top it gives the former stacking order. The windows that
// stayed are raised in their turn, or those that come back would all end above them.
void HiddenWindows::restore(const ClientList& list) {
    const auto unhidden = std::exchange(m_unhidden, {});
    std::multimap<std::uint32_t, const ClientWindow*> byPlace;
    bool anyComesBack = false;
    for (const auto& window : list.windows) {
        const auto* entry = find(window.id);
        const bool isUnhidden = unhidden.contains(window.application);
        const bool isHidden = entry ? entry->isHidden() : window.hiddenMark.has_value();
        const bool comesBack = isHidden && (isUnhidden || (entry && entry->stage == Stage::waiting));
        const bool isHere = list.isOnCurrentWorkspace(window);
        if (entry && entry->stage == Stage::due && isUnhidden)
            forget(window.id);
        else if (comesBack && !isHere && window.isConcealed)
            reveal(window);
        else if (comesBack && !isHere)
            follow(window, list.moment, Stage::waiting);
        else if (isHere && (comesBack || (!isHidden && std::ranges::count(m_stacking, window.id) > 0)))
            byPlace.emplace(window.hiddenMark ? *window.hiddenMark : place(window.id), &window);
        anyComesBack |= comesBack && isHere;
    }
    if (anyComesBack)
        putInOrder(byPlace, list);
    m_isHiding = m_isHiding && std::ranges::any_of(m_entries, [](const auto& entry) {
                     return entry.second.stage == Stage::due || entry.second.stage == Stage::hidden;
                 });
}

void HiddenWindows::putInOrder(const std::multimap<std::uint32_t, const ClientWindow*>& byPlace,
                               const ClientList& list) {
    m_order.clear();
    for (const auto& [place, window] : byPlace) {
        const auto* entry = find(window->id);
        if (entry ? entry->isHidden() : window->hiddenMark.has_value())
            bringBack(*window, list.moment);
        else if (window->isApplicationWindow && !window->isMinimised)
            send(What::raise, window->id);
        else
            continue;
        m_order.push_back(window->id);
    }
}

void HiddenWindows::bringBack(const ClientWindow& window, std::uint32_t moment) {
    auto* known = find(window.id);
    const bool isConcealed = known ? known->isConcealed : window.isConcealed;
    if (isConcealed && !(known && known->mayObeyLate())) {
        reveal(window);
        return send(What::raise, window.id);
    }
    if (isConcealed)
        obeyedLate(window.id, *known);
    else if (!window.isMinimised && known && known->requests == 0)
        return release(window.id); // the user has brought it back
    const bool mayBeMinimised = window.isMinimised || known;
    follow(window, moment, Stage::returning).requests = 1;
    // One that a process before has marked may be back by the user, or about to be minimised: it is looked
    // at.
    if (mayBeMinimised)
        activate(window.id);
}

void HiddenWindows::activate(xcb_window_t window) {
    m_broughtBack.insert(window);
    m_lastBroughtBack = window;
    send(What::activate, window);
}

// In the former stacking order, since activation raises.
void HiddenWindows::carriedOut(const ClientList& list) {
    std::vector<const ClientWindow*> windows;
    for (const auto& window : list.windows)
        windows.push_back(&window);
    std::ranges::stable_sort(windows, {}, [](const auto* window) { return window->hiddenMark; });
    bool anyIsAskedBack = false;
    for (const auto* window : windows)
        if (auto* entry = find(window->id); entry && entry->requests > 0)
            anyIsAskedBack |= lookAt(*window, *entry) == What::activate;
    if (!anyIsAskedBack)
        anyIsAskedBack = activateWhatWasNotRaised(list);
    const auto* front = list.find(m_front);
    if (anyIsAskedBack && front && !front->isMinimised && list.isOnCurrentWorkspace(*front))
        send(What::activate, m_front);
}

// GNOME's window manager raises only what it is asked to activate. Those are let be that stand in their order
// from the bottom up. Where windows are not minimised they lie side by side or in tabs, which activation
// would turn over.
bool HiddenWindows::activateWhatWasNotRaised(const ClientList& list) {
    auto order = std::exchange(m_order, {});
    std::erase_if(order, [&](auto window) {
        const auto* found = list.find(window);
        return window == m_front || !found || found->isMinimised;
    });
    const auto isBelow = [&](auto one, auto other) { return list.find(one) < list.find(other); };
    const auto first = list.canMinimise ? std::ranges::is_sorted_until(order, isBelow) : order.end();
    std::for_each(first, order.end(), [this](auto window) { activate(window); });
    return first != order.end();
}

/// It is asked no more for what its window manager has done by now, or is about to do.
void HiddenWindows::obeyedLate(xcb_window_t window, Entry& entry) {
    entry.isConcealed = false;
    entry.requests = 0;
    send(What::mark, window, place(window));
    send(What::reveal, window);
}

/// What it is asked for again, if at all.
std::optional<HiddenWindows::What> HiddenWindows::lookAt(const ClientWindow& window, Entry& entry) {
    const bool isToBeHidden = entry.stage == Stage::hidden;
    if (entry.mayObeyLate()) {
        if (window.isMinimised)
            obeyedLate(window.id, entry);
    } else if (!window.isMinimised && !isToBeHidden)
        release(window.id);
    else if (window.isMinimised && entry.stage != Stage::returning)
        entry.requests = 0;
    else if (++entry.requests > mostRequests)
        giveUp(window, entry);
    else {
        const auto what = isToBeHidden ? What::minimise : What::activate;
        send(what, window.id);
        return what;
    }
    return std::nullopt;
}

/// The mark stays: a window manager that hangs may obey later.
void HiddenWindows::giveUp(const ClientWindow& window, Entry& entry) {
    if (entry.stage == Stage::hidden)
        return conceal(window, entry.moment);
    entry.requests = 0;
    m_complaints.push_back("A window of \"" + window.application +
                           "\" is not brought back by the window manager");
}

void HiddenWindows::release(xcb_window_t window) {
    send(What::unmark, window);
    forget(window);
}

void HiddenWindows::windowManagerChanged() {
    for (auto& [window, entry] : m_entries)
        if (entry.isConcealed)
            send(What::conceal, window); // by its frame, which is another one
        else if (entry.stage != Stage::due)
            entry.requests = 1;
}

void HiddenWindows::bringToFront(xcb_window_t window, Time now) {
    m_front = window;
    m_settlingEnds = now + settlingTime();
    send(What::activate, window);
}

xcb_window_t HiddenWindows::front(xcb_window_t active, Time now) const {
    return isSettling(now) && m_broughtBack.contains(active) ? m_front : active;
}

HiddenWindows::Duration HiddenWindows::settlingTime() const {
    return longestSettling + settlingOfEach * m_broughtBack.size();
}

void HiddenWindows::bringBackInPlace(What way, const ClientList& list) {
    for (const auto& window : list.windows)
        if (const auto* entry = find(window.id); entry && entry->isToComeBack())
            send(way, window.id);
}

bool HiddenWindows::haveReturned(const ClientList& list) {
    bool allHave = true;
    for (const auto& window : list.windows) {
        const auto* entry = find(window.id);
        if (!entry || !entry->isToComeBack())
            continue;
        if (window.isMinimised) {
            allHave = false;
            continue;
        }
        if (entry->stage == Stage::waiting && window.workspace != entry->workspace)
            send(What::moveTo, window.id, entry->workspace);
        release(window.id);
    }
    return allHave;
}

void HiddenWindows::arrived(const ClientList& list, Time now) {
    bool anyWaits = false;
    for (const auto& window : list.windows) {
        const auto* entry = find(window.id);
        if (!entry || !list.isOnCurrentWorkspace(window))
            continue;
        anyWaits |= entry->stage == Stage::waiting;
        if (entry->stage != Stage::due)
            continue;
        if (window.isMinimised || window.workspace != entry->workspace)
            forget(window.id); // the user has put it away, or brought it along
        else
            minimise(window, list.moment);
    }
    if (!anyWaits)
        return;
    restore(list);
    if (const auto* active = list.find(list.active); active && active->isApplicationWindow)
        bringToFront(active->id, now);
}

// A window manager that learns of a change of focus later than it was asked for takes the window in front for
// the one that has it still, and leaves the focus where it was last. So the request is made again as long as
// one of those brought back has the focus, until the uppermost of them has had it and the front window has it
// again.
void HiddenWindows::activeIs(xcb_window_t window, Time now) {
    if (!isSettling(now))
        return;
    if (window == m_lastBroughtBack)
        m_lastBroughtBack = XCB_NONE;
    if (m_broughtBack.contains(window))
        send(What::activate, m_front);
    else if (window == m_front && m_lastBroughtBack == XCB_NONE)
        m_broughtBack.clear();
}

void HiddenWindows::stateIs(xcb_window_t window, bool isMinimised) {
    auto* entry = find(window);
    if (entry && entry->mayObeyLate() && isMinimised)
        obeyedLate(window, *entry);
    else if (entry && entry->stage != Stage::due && entry->requests == 0 && !entry->isConcealed &&
             !isMinimised)
        release(window); // the user has brought it back
}

void HiddenWindows::destroyed(xcb_window_t window, std::uint32_t moment) {
    const auto* entry = find(window);
    const bool isOlder = entry && static_cast<std::int32_t>(moment - entry->moment) < 0;
    if (isOlder)
        send(What::watch, window); // which was the one before it
    else
        m_entries.erase(window);
}

void HiddenWindows::send(What what, xcb_window_t window, std::uint32_t value) {
    m_commands.push_back({what, window, value});
}

HiddenWindows::Entry* HiddenWindows::find(xcb_window_t window) {
    const auto found = m_entries.find(window);
    return found == m_entries.end() ? nullptr : &found->second;
}

HiddenWindows::Entry& HiddenWindows::follow(const ClientWindow& window, std::uint32_t moment, Stage stage) {
    const auto [found, isNew] = m_entries.try_emplace(window.id);
    if (isNew)
        send(What::watch, window.id);
    auto& entry = found->second;
    entry.stage = stage;
    entry.moment = moment;
    entry.workspace = window.workspace;
    return entry;
}

void HiddenWindows::forget(xcb_window_t window) {
    if (m_entries.erase(window) > 0)
        send(What::unwatch, window);
}

/// One that came later stands above those that were there.
std::uint32_t HiddenWindows::place(xcb_window_t window) {
    const auto known = std::ranges::find(m_stacking, window);
    const auto index = static_cast<std::uint32_t>(known - m_stacking.begin());
    if (known == m_stacking.end())
        m_stacking.push_back(window);
    return index;
}

} // namespace tavro
