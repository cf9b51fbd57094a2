#include "platform/simulated/windows/SimulatedScreens.h"

namespace tavro {

namespace {

std::optional<DisplayID> displayOf(const Screen& screen) {
    const auto entry = screen.deviceDescription.find("NSScreenNumber");
    const auto number = entry == screen.deviceDescription.end() ? std::nullopt : entry->second.exactUInt32();
    return number ? std::optional(DisplayID(*number)) : std::nullopt;
}

} // namespace

std::optional<Screen> SimulatedScreens::mainScreen() const {
    return m_main < m_screens.size() ? std::optional(m_screens[m_main]) : std::nullopt;
}

std::optional<DisplayID> SimulatedScreens::mainDisplayID() const {
    return m_screens.empty() ? std::nullopt : displayOf(m_screens.front());
}

Rect SimulatedScreens::displayBounds(DisplayID display) const {
    for (const auto& screen : m_screens)
        if (displayOf(screen) == display)
            return flipped(screen.frame);
    return {};
}

void SimulatedScreens::set(std::vector<Screen> screens) {
    m_screens = std::move(screens);
    m_main = 0;
    m_observers.notify();
}

Observation SimulatedScreens::didChange(std::function<void()> observer) {
    return m_observers.add(std::move(observer));
}

Screen SimulatedScreens::screen(Rect frame, PropertyList number) {
    return {frame, {{"NSScreenNumber", std::move(number)}}};
}

Rect SimulatedScreens::flipped(Rect rect) const {
    const double height = m_screens.empty() ? 0 : m_screens.front().frame.size.height;
    rect.origin.y = height - rect.origin.y - rect.size.height;
    return rect;
}

} // namespace tavro
