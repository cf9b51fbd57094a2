#include "platform/simulated/windows/SimulatedWindowList.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace tavro {

namespace {

PropertyList describe(const ServerWindow& window) {
    return PropertyList::Dictionary{{WindowListKey::ownerName, window.ownerName},
                                    {WindowListKey::name, window.name},
                                    {WindowListKey::number, static_cast<std::uint32_t>(window.number)}};
}

bool overlap(const Rect& a, const Rect& b) {
    return a.origin.x < b.origin.x + b.size.width && b.origin.x < a.origin.x + a.size.width &&
           a.origin.y < b.origin.y + b.size.height && b.origin.y < a.origin.y + a.size.height;
}

Image filled(Size size, std::uint32_t color) {
    const auto width = static_cast<std::size_t>(size.width);
    const auto height = static_cast<std::size_t>(size.height);
    const auto pixels = std::make_shared<std::vector<std::uint32_t>>(width * height, color);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(pixels->data());
    return {static_cast<int>(width), static_cast<int>(height), width * sizeof(color),
            std::shared_ptr<const std::uint8_t>(pixels, bytes), size};
}

} // namespace

SimulatedWindowList::SimulatedWindowList(const SimulatedScreens& screens, const SimulatedWindowServer& server)
    : m_screens(screens)
    , m_server(server) {}

std::optional<PropertyList::Array> SimulatedWindowList::copyWindowInfo(unsigned options,
                                                                       WindowNumber relativeTo) const {
    ++m_listCount;
    if (std::exchange(m_failNextList, false))
        return std::nullopt;
    auto list = m_junk;
    const bool belowOnly = options & WindowListOption::onScreenBelowWindow;
    bool isSelected = !belowOnly;
    for (const auto& window : m_server.windows() | std::views::reverse) {
        const bool isShown = m_server.isVisible(window) || !(options & WindowListOption::onScreenOnly);
        if (isSelected && isShown)
            list.push_back(describe(window));
        isSelected = isSelected || (window.number == relativeTo && m_server.isVisible(window));
    }
    return list;
}

std::optional<Image> SimulatedWindowList::createImage(Rect area, unsigned, WindowNumber number,
                                                      unsigned) const {
    if (std::exchange(m_failNextImage, false))
        return std::nullopt;
    const auto* window = m_server.find(number);
    if (!window || !m_server.isVisible(*window) || area.size.width < 1 || area.size.height < 1)
        return std::nullopt;
    return filled(area.size, overlap(m_screens.flipped(area), window->frame) ? window->color : 0);
}

} // namespace tavro
