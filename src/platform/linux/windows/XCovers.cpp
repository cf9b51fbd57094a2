#include "platform/linux/windows/XCovers.h"

#include "platform/process/Log.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace tavro {

namespace {

void select(const XConnection& x, xcb_window_t window, std::uint32_t events) {
    xcb_change_window_attributes(x.raw(), window, XCB_CW_EVENT_MASK, &events);
}

std::string describe(const CoverPane& pane, const char* way) {
    std::ostringstream text;
    text << "Cover of " << pane.place.width() << 'x' << pane.place.height() << '+' << pane.place.x() << '+'
         << pane.place.y() << ' ' << way << " 0x" << std::hex << pane.parent;
    return text.str();
}

} // namespace

XCovers::XCovers(XConnection& x, DesktopSnapshots& snapshots, Log& log)
    : m_x(x)
    , m_snapshots(snapshots)
    , m_log(log)
    , m_events{
          x.onPropertyChange(x.root(), x.atoms().netClientListStacking, [this] { desktopChanged(); }),
          x.on(XEvents::configureNotify,
               [this](const auto& event) {
                   if (std::ranges::count(m_desktopWindows, event.window, &DesktopWindow::id) > 0)
                       desktopChanged();
               }),
      } {}

void XCovers::show(xcb_window_t number, const QRect& place, const Backdrop::Settings& settings,
                   std::shared_ptr<const XPixmap> picture) {
    if (m_covers.empty())
        follow(m_snapshots.current()->desktopWindows);
    auto& cover = m_covers[number];
    cover.place = place;
    cover.settings = settings;
    cover.picture = std::move(picture);
    cover.panes.clear();
    placePanes(number, cover);
}

void XCovers::setPicture(xcb_window_t number, std::shared_ptr<const XPixmap> picture) {
    const auto found = m_covers.find(number);
    if (found == m_covers.end())
        return;
    found->second.picture = std::move(picture);
    for (const auto& pane : found->second.panes)
        paint(found->second, pane);
    m_x.flush();
}

void XCovers::remove(xcb_window_t number) {
    if (m_covers.erase(number) > 0)
        m_x.flush();
    if (m_covers.empty())
        for (const auto& window : std::exchange(m_desktopWindows, {}))
            select(m_x, window.id, XCB_EVENT_MASK_NO_EVENT);
}

void XCovers::desktopChanged() {
    if (m_covers.empty())
        return;
    auto now = readDesktopWindows();
    if (now == m_desktopWindows)
        return;
    follow(std::move(now));
    for (auto& [number, cover] : m_covers)
        placePanes(number, cover);
}

// Three round trips, however many windows there are.
std::vector<DesktopWindow> XCovers::readDesktopWindows() const {
    auto windows = m_x.values(m_x.request(m_x.root(), m_x.atoms().netClientListStacking));
    std::erase_if(windows, [this](auto window) { return isOurs(window); });
    std::vector<xcb_get_property_cookie_t> types;
    for (const auto window : windows)
        types.push_back(m_x.request(window, m_x.atoms().netWmWindowType));
    std::vector<xcb_window_t> desktopWindows;
    for (std::size_t i = 0; i < windows.size(); ++i)
        if (std::ranges::count(m_x.values(types[i]), m_x.atoms().netWmWindowTypeDesktop) > 0)
            desktopWindows.push_back(windows[i]);
    return DesktopSnapshot::placesOf(m_x, desktopWindows);
}

void XCovers::follow(std::vector<DesktopWindow> desktopWindows) {
    m_desktopWindows = std::move(desktopWindows);
    for (const auto& window : m_desktopWindows)
        select(m_x, window.id, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
}

void XCovers::placePanes(xcb_window_t number, Cover& cover) {
    const DesktopWindow root{m_x.root(), m_x.screen()->root_depth, {}};
    const auto wanted = panesOf(cover.place, m_desktopWindows, root);
    std::erase_if(cover.panes, [&](const auto& pane) { return std::ranges::count(wanted, pane.pane) == 0; });
    for (const auto& pane : wanted) {
        if (std::ranges::count(cover.panes, pane, &Pane::pane) > 0)
            continue;
        // Never one again that the window manager may still know.
        const bool isFirst = !std::exchange(cover.hasUsedNumber, true);
        auto window = makeWindow(isFirst ? number : xcb_generate_id(m_x.raw()), pane, cover.settings);
        cover.panes.push_back({pane, std::move(window)});
        paint(cover, cover.panes.back());
        cover.panes.back().window->show();
    }
    m_x.flush();
}

std::unique_ptr<PaintedWindow> XCovers::makeWindow(xcb_window_t number, const CoverPane& pane,
                                                   const Backdrop::Settings& settings) const {
    std::unique_ptr<PaintedWindow> window;
    const char* way = "inside the desktop window";
    if (pane.parent == m_x.root()) {
        auto backdrop = std::make_unique<Backdrop>(m_x, number, pane.place, settings);
        way = backdrop->isManaged() ? "as a desktop window on" : "as the lowest window on";
        window = std::move(backdrop);
    } else
        window = std::make_unique<PaintedWindow>(m_x, number, PaintedWindow::Kind::unmanaged, pane.parent,
                                                 pane.place);
    if (settings.passesClicks)
        PaintedWindow::passClicks(m_x, number);
    if (qEnvironmentVariableIntValue("TAVRO_DEBUG") == 1)
        m_log.diagnose(describe(pane, way));
    return window;
}

void XCovers::paint(const Cover& cover, const Pane& pane) const {
    const QRect part(pane.pane.offset, pane.pane.place.size());
    if (part == QRect({}, cover.place.size()) && pane.pane.depth == cover.picture->depth())
        pane.window->setBackground(*cover.picture);
    else
        pane.window->setBackground(XPixmap(m_x, *cover.picture, part, pane.pane.depth));
}

bool XCovers::isOurs(xcb_window_t window) const {
    return std::ranges::any_of(m_covers, [window](const auto& entry) {
        return std::ranges::any_of(entry.second.panes,
                                   [window](const auto& pane) { return pane.window->number() == window; });
    });
}

} // namespace tavro
