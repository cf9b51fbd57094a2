#pragma once

#include <compare>

namespace tavro {

/// The generation of the system that a feature's mechanism is chosen by.
struct SystemVersion {
    int major = 0;
    int minor = 0;
    auto operator<=>(const SystemVersion&) const = default;
};

} // namespace tavro
