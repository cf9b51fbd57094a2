#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tavro {

/// The keyboard layout that the user types Latin letters with. Main thread only.
class KeyboardLayout {
public:
    virtual ~KeyboardLayout() = default;
    /// What the key at that place is labelled with, without modifiers, in UTF-8; an accent for a dead key.
    /// None where there is no layout, or the key types no text.
    virtual std::optional<std::string> displayText(std::uint16_t keyCode) const = 0;
};

} // namespace tavro
