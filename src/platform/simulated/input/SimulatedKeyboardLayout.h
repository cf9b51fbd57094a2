#pragma once

#include "platform/input/KeyboardLayout.h"

#include <map>

namespace tavro {

/// A US keyboard, of which keys can be labelled otherwise.
class SimulatedKeyboardLayout final : public KeyboardLayout {
public:
    SimulatedKeyboardLayout();
    std::optional<std::string> displayText(std::uint16_t keyCode) const override;

    /// The user switches to a layout on which the key bears that text, or none.
    void relabel(std::uint16_t keyCode, std::optional<std::string> text);

private:
    std::map<std::uint16_t, std::string> m_texts;
};

} // namespace tavro
