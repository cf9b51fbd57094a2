#include "Desktop.h"

#include <algorithm>
#include <poll.h>
#include <stdexcept>
#include <xcb/damage.h>

namespace bench {

namespace {

/// How long nothing must happen for the last change to have been the last.
constexpr std::chrono::milliseconds quiet{400};
constexpr std::chrono::seconds settlesWithin{6};
constexpr const char* watched[] = {"_NET_CLIENT_LIST_STACKING", "_NET_ACTIVE_WINDOW", "_NET_WM_STATE"};
constexpr auto type = "_NET_WM_WINDOW_TYPE";

} // namespace

Desktop::Desktop() {
    m_server.watch(m_server.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    // The root window's damage is that of all windows on all screens.
    auto* connection = m_server.raw();
    const auto* extension = xcb_get_extension_data(connection, &xcb_damage_id);
    const auto version = owned(
        xcb_damage_query_version_reply(connection, xcb_damage_query_version(connection, 1, 1), nullptr));
    if (!extension->present || !version)
        throw std::runtime_error("The X server does not report damage");
    m_damageEvent = static_cast<std::uint8_t>(extension->first_event + XCB_DAMAGE_NOTIFY);
    xcb_damage_create(connection, xcb_generate_id(connection), m_server.root(),
                      XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
    watchClients();
}

bool Desktop::isApplicationWindow(xcb_window_t window) const {
    return !m_server.has(window, type, "_NET_WM_WINDOW_TYPE_DESKTOP") &&
           !m_server.has(window, type, "_NET_WM_WINDOW_TYPE_DOCK") &&
           !m_server.has(window, "_NET_WM_STATE", "_NET_WM_STATE_SKIP_TASKBAR");
}

std::vector<Rect> Desktop::panelAreas() const {
    std::vector<Rect> areas;
    for (const auto window : m_server.clients())
        if (m_server.has(window, type, "_NET_WM_WINDOW_TYPE_DOCK"))
            areas.push_back(m_server.place(m_server.frame(window)));
    return areas;
}

/// The whole root window.
Rect Desktop::all() const {
    return m_server.place(m_server.root());
}

void Desktop::black(Pixels& picture, const std::vector<Rect>& areas) const {
    const auto [x, y, width, height] = all();
    if (picture.empty())
        return;
    for (const auto& area : areas) {
        const int left = std::clamp(area.x, 0, width);
        const int right = std::clamp(area.x + area.width, left, width);
        for (int row = std::max(area.y, 0); row < std::min(area.y + area.height, height); ++row)
            std::fill_n(picture.begin() + row * width + left, right - left, 0);
    }
}

Pixels Desktop::only(const Pixels& picture, const std::vector<Rect>& areas) const {
    auto others = picture;
    black(others, areas);
    auto wanted = picture;
    std::ranges::transform(wanted, others, wanted.begin(),
                           [](auto every, auto outside) { return every ^ outside; });
    return wanted;
}

// Screens need not fill the root window.
Desktop::State Desktop::state() {
    State state{
        m_server.clients(), m_server.active(), {}, only(m_server.screenshot(all()), m_server.screens())};
    std::ranges::copy_if(state.stacking, std::back_inserter(state.minimised),
                         [this](auto window) { return m_server.isMinimised(window); });
    black(state.picture, panelAreas()); // its buttons show what is minimised, and where the pointer is
    return state;
}

std::vector<Rect> Desktop::publicAreas(const State& before) const {
    auto areas = panelAreas();
    const auto kept = m_server.text(before.active, "WM_CLASS");
    for (const auto window : before.stacking)
        if (isApplicationWindow(window) && m_server.text(window, "WM_CLASS") == kept)
            areas.push_back(m_server.place(m_server.frame(window)));
    return areas;
}

bool Desktop::isPresentable(const State& before) {
    const auto kept = m_server.text(before.active, "WM_CLASS");
    for (const auto window : before.stacking)
        if (isApplicationWindow(window) && !m_server.isMinimised(window) &&
            m_server.text(window, "WM_CLASS") != kept)
            return false;
    const auto hiding = publicAreas(before);
    auto wanted = only(m_server.wallpaper(all()), m_server.screens());
    auto visible = only(m_server.screenshot(all()), m_server.screens());
    if (wanted.empty())
        throw std::runtime_error("The desktop does not name its wallpaper");
    black(wanted, hiding);
    black(visible, hiding);
    return wanted == visible;
}

void Desktop::watchClients() const {
    for (const auto window : m_server.clients())
        m_server.watch(window, XCB_EVENT_MASK_PROPERTY_CHANGE);
}

void Desktop::note(const xcb_generic_event_t& event, const std::vector<Rect>& areas, Change& change) const {
    if ((event.response_type & 0x7F) == m_damageEvent) {
        change.any = Clock::now();
        const auto& [x, y, width, height] = reinterpret_cast<const xcb_damage_notify_event_t&>(event).area;
        const bool isInside = std::ranges::any_of(areas, [&](const Rect& area) {
            return area.contains({x, y}) && area.contains({x + width - 1, y + height - 1});
        });
        if (!isInside)
            change.outside = change.any;
    } else if ((event.response_type & 0x7F) == XCB_PROPERTY_NOTIFY) {
        const auto atom = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
        if (std::ranges::any_of(watched, [&](const auto* name) { return m_server.atom(name) == atom; }))
            change.any = Clock::now();
    }
}

Desktop::Change Desktop::settle(Clock::time_point since, const std::string& what,
                                const std::function<bool()>& condition, const std::vector<Rect>& areas) {
    Change last{since, since};
    auto quietSince = Clock::now();
    while (true) {
        const auto before = last.any;
        while (const auto event = owned(xcb_poll_for_event(m_server.raw())))
            note(*event, areas, last);
        if (last.any != before)
            quietSince = last.any;
        if (xcb_connection_has_error(m_server.raw()))
            throw std::runtime_error("The X server has gone");
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(quietSince + quiet - Clock::now());
        pollfd readable{xcb_get_file_descriptor(m_server.raw()), POLLIN, 0};
        if (left.count() > 0) {
            ::poll(&readable, 1, static_cast<int>(left.count()));
            continue;
        }
        if (condition())
            return last;
        if (Clock::now() > since + settlesWithin)
            throw std::runtime_error("The desktop has not come to the state that was wanted: " + what);
        quietSince = Clock::now();
    }
}

Clock::time_point Desktop::settle(Clock::time_point since, const std::string& what,
                                  const std::function<bool()>& condition) {
    return settle(since, what, condition, {}).any;
}

void Desktop::settle() {
    settle(Clock::now(), "rest", [] { return true; });
}

Clock::time_point Desktop::click(Point place) {
    const auto start = Clock::now();
    m_input.click(place, Input::Button::middle);
    // The panel has taken it when something changes. A tool tip would come if the pointer stayed.
    pollfd readable{xcb_get_file_descriptor(m_server.raw()), POLLIN, 0};
    ::poll(&readable, 1, static_cast<int>(quiet.count()));
    m_input.moveTo(quietPlace());
    return start;
}

void Desktop::movePointer(Point place) {
    m_input.moveTo(place);
    settle();
}

void Desktop::pressEscape() {
    m_input.type(Input::Key::escape);
    settle();
}

void Desktop::parkPointer() {
    movePointer(quietPlace());
}

Point Desktop::quietPlace() const {
    const auto area = m_server.screens().back();
    return {area.x + area.width - 2, area.y + area.height - 2};
}

Pixels Desktop::panels() {
    return only(m_server.screenshot(all()), panelAreas());
}

Point Desktop::newestItem(const Pixels& panelsBefore) {
    const auto now = panels();
    int right = -1;
    for (std::size_t i = 0; i < now.size(); ++i)
        if (now[i] != panelsBefore[i])
            right = std::max(right, static_cast<int>(i) % all().width);
    const auto areas = panelAreas();
    if (right < 0 || areas.empty())
        throw std::runtime_error("No item came to the panel");
    const auto& panel = areas.front();
    const int half = panel.height / 2;
    return {right - half / 2, panel.y + half};
}

} // namespace bench
