#include "platform/simulated/input/SimulatedKeyboardLayout.h"

#include <string_view>

namespace tavro {

SimulatedKeyboardLayout::SimulatedKeyboardLayout() {
    // By virtual key code from 0 on; a space stands for a place without a text.
    constexpr std::string_view texts = "asdfhgzxcv bqweryt123465=97-80]ou[ip lj'k;\\,/nm.  `";
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (texts[i] != ' ')
            m_texts.emplace(static_cast<std::uint16_t>(i), texts.substr(i, 1));
}

std::optional<std::string> SimulatedKeyboardLayout::displayText(std::uint16_t keyCode) const {
    const auto entry = m_texts.find(keyCode);
    return entry == m_texts.end() ? std::nullopt : std::optional(entry->second);
}

void SimulatedKeyboardLayout::relabel(std::uint16_t keyCode, std::optional<std::string> text) {
    m_texts.erase(keyCode);
    if (text)
        m_texts.emplace(keyCode, std::move(*text));
}

} // namespace tavro
