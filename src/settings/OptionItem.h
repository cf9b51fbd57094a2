#pragma once

#include <string>

namespace tavro {

/// One switchable feature of presentation mode.
struct OptionItem {
    /// Stable; also the feature's user-defaults key.
    std::string id;
    /// The title shown to the user.
    std::string name;
    bool isOn = false;
    bool operator==(const OptionItem&) const = default;
};

} // namespace tavro
