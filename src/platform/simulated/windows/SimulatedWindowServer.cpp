#include "platform/simulated/windows/SimulatedWindowServer.h"

#include "platform/simulated/windows/SimulatedOverlayWindow.h"
#include "platform/simulated/windows/SimulatedPopover.h"
#include "platform/simulated/windows/SimulatedTitledWindow.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace tavro {

namespace {

bool contains(const Rect& rect, Point point) {
    return point.x >= rect.origin.x && point.x < rect.origin.x + rect.size.width &&
           point.y >= rect.origin.y && point.y < rect.origin.y + rect.size.height;
}

} // namespace

SimulatedWindowServer::SimulatedWindowServer(SystemVersion version, Journal& journal,
                                             SimulatedScreens& screens)
    : m_version(version)
    , m_journal(journal)
    , m_screens(screens)
    , m_screensChange(screens.didChange([this] { rebuildDesktop(); })) {
    rebuildDesktop();
}

template <class SimulatedKind>
std::shared_ptr<SimulatedKind> SimulatedWindowServer::createWindow(const WindowSettings& settings) {
    if (std::exchange(m_failNextWindow, false))
        return nullptr;
    ServerWindow window{ApplicationID::self, "TavroPRO", "", settings.contentRect};
    window.isOrdered = false;
    const auto number = add(std::move(window));
    m_journal.record("windowServer.createWindow", static_cast<std::uint32_t>(number), settings.contentRect,
                     settings.styleMask, static_cast<int>(settings.backing), settings.defer);
    return std::make_shared<SimulatedKind>(number, *this, m_journal);
}

std::shared_ptr<OverlayWindow> SimulatedWindowServer::createOverlayWindow(const WindowSettings& settings) {
    return createWindow<SimulatedOverlayWindow>(settings);
}

std::shared_ptr<TitledWindow> SimulatedWindowServer::createTitledWindow(const WindowSettings& settings) {
    return createWindow<SimulatedTitledWindow>(settings);
}

std::shared_ptr<Popover> SimulatedWindowServer::createPopover() {
    return std::make_shared<SimulatedPopover>(m_journal);
}

int SimulatedWindowServer::levelForKey(WindowLevelKey key) const {
    return key == WindowLevelKey::normal ? WindowLevel::normal : desktopIconLevel;
}

WindowNumber SimulatedWindowServer::add(ServerWindow window) {
    window.number = WindowNumber(++m_lastNumber);
    insert(std::move(window));
    return WindowNumber(m_lastNumber);
}

void SimulatedWindowServer::remove(WindowNumber number) {
    extract(number);
}

void SimulatedWindowServer::removeWindowsOf(ApplicationID owner) {
    std::erase_if(m_windows, [&](const auto& window) { return window.owner == owner; });
    m_hiddenOwners.erase(owner);
}

void SimulatedWindowServer::orderFront(WindowNumber number) {
    if (auto window = extract(number)) {
        window->isOrdered = true;
        insert(std::move(*window));
    }
}

void SimulatedWindowServer::setLevel(WindowNumber number, int level) {
    if (auto window = extract(number)) {
        window->level = level;
        insert(std::move(*window));
    }
}

void SimulatedWindowServer::setHidden(ApplicationID owner, bool isHidden) {
    if (isHidden)
        m_hiddenOwners.insert(owner);
    else
        m_hiddenOwners.erase(owner);
}

ServerWindow* SimulatedWindowServer::find(WindowNumber number) {
    return const_cast<ServerWindow*>(std::as_const(*this).find(number));
}

const ServerWindow* SimulatedWindowServer::find(WindowNumber number) const {
    const auto window = std::ranges::find(m_windows, number, &ServerWindow::number);
    return window == m_windows.end() ? nullptr : &*window;
}

bool SimulatedWindowServer::isVisible(const ServerWindow& window) const {
    return window.isOrdered && !window.isMinimised &&
           !(window.canHide && m_hiddenOwners.contains(window.owner));
}

const ServerWindow* SimulatedWindowServer::windowAt(Point point) const {
    for (const auto& window : m_windows | std::views::reverse)
        if (isVisible(window) && !window.ignoresMouseEvents && contains(window.frame, point))
            return &window;
    return nullptr;
}

void SimulatedWindowServer::insert(ServerWindow window) {
    const auto place = std::ranges::upper_bound(m_windows, window.level, {}, &ServerWindow::level);
    m_windows.insert(place, std::move(window));
}

std::optional<ServerWindow> SimulatedWindowServer::extract(WindowNumber number) {
    const auto window = std::ranges::find(m_windows, number, &ServerWindow::number);
    if (window == m_windows.end())
        return std::nullopt;
    auto extracted = std::move(*window);
    m_windows.erase(window);
    return extracted;
}

void SimulatedWindowServer::rebuildDesktop() {
    removeWindowsOf(ApplicationID::system);
    int index = 0;
    for (const auto& screen : m_screens.screens()) {
        const auto name = m_version >= SystemVersion{14, 0} ? "Wallpaper-" + std::to_string(++index)
                                                            : std::string("Desktop Picture - Harbour");
        ServerWindow wallpaper{ApplicationID::system, "Dock", name, screen.frame, wallpaperLevel};
        wallpaper.canHide = false;
        wallpaper.color = 0xff205080;
        add(std::move(wallpaper));
        ServerWindow icons{ApplicationID::system, "Finder", "", screen.frame, desktopIconLevel};
        icons.canHide = false;
        add(std::move(icons));
    }
}

} // namespace tavro
