#include "platform/simulated/windows/SimulatedWindowStack.h"

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

WindowNumber SimulatedWindowStack::add(ServerWindow window) {
    window.number = WindowNumber(++m_lastNumber);
    insert(std::move(window));
    return WindowNumber(m_lastNumber);
}

void SimulatedWindowStack::remove(WindowNumber number) {
    extract(number);
}

void SimulatedWindowStack::removeWindowsOf(ApplicationID owner) {
    std::erase_if(m_windows, [&](const auto& window) { return window.owner == owner; });
    m_hiddenOwners.erase(owner);
}

void SimulatedWindowStack::orderFront(WindowNumber number) {
    if (auto window = extract(number)) {
        window->isOrdered = true;
        insert(std::move(*window));
    }
}

void SimulatedWindowStack::setLevel(WindowNumber number, int level) {
    if (auto window = extract(number)) {
        window->level = level;
        insert(std::move(*window));
    }
}

void SimulatedWindowStack::setHidden(ApplicationID owner, bool isHidden) {
    if (isHidden)
        m_hiddenOwners.insert(owner);
    else
        m_hiddenOwners.erase(owner);
}

ServerWindow* SimulatedWindowStack::find(WindowNumber number) {
    return const_cast<ServerWindow*>(std::as_const(*this).find(number));
}

const ServerWindow* SimulatedWindowStack::find(WindowNumber number) const {
    const auto window = std::ranges::find(m_windows, number, &ServerWindow::number);
    return window == m_windows.end() ? nullptr : &*window;
}

bool SimulatedWindowStack::isVisible(const ServerWindow& window) const {
    return window.isOrdered && !window.isMinimised &&
           !(window.canHide && m_hiddenOwners.contains(window.owner));
}

const ServerWindow* SimulatedWindowStack::windowAt(Point point) const {
    for (const auto& window : m_windows | std::views::reverse)
        if (isVisible(window) && !window.ignoresMouseEvents && contains(window.frame, point))
            return &window;
    return nullptr;
}

void SimulatedWindowStack::insert(ServerWindow window) {
    const auto place = std::ranges::upper_bound(m_windows, window.level, {}, &ServerWindow::level);
    m_windows.insert(place, std::move(window));
}

std::optional<ServerWindow> SimulatedWindowStack::extract(WindowNumber number) {
    const auto window = std::ranges::find(m_windows, number, &ServerWindow::number);
    if (window == m_windows.end())
        return std::nullopt;
    auto extracted = std::move(*window);
    m_windows.erase(window);
    return extracted;
}

} // namespace tavro
