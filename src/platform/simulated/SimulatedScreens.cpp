#include "platform/simulated/SimulatedScreens.h"

namespace tavro {

std::optional<Screen> SimulatedScreens::mainScreen() const {
    return m_main < m_screens.size() ? std::optional(m_screens[m_main]) : std::nullopt;
}

Rect SimulatedScreens::displayBounds(DisplayID display) const {
    for (const auto& screen : m_screens) {
        const auto number = screen.deviceDescription.find("NSScreenNumber");
        if (number != screen.deviceDescription.end() &&
            number->second.exactUInt32() == static_cast<std::uint32_t>(display))
            return flipped(screen.frame);
    }
    return {};
}

void SimulatedScreens::set(std::vector<Screen> screens) {
    m_screens = std::move(screens);
    m_main = 0;
    m_observers.tell();
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
