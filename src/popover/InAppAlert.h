#pragma once

#include "platform/windows/Color.h"

#include <string>

namespace tavro {

/// A banner across the popover with one message. In points.
struct InAppAlert {
    static constexpr double horizontalPadding = 20, verticalPadding = 10;
    /// Where it stands in a stack, it is pulled up by so much.
    static constexpr double topPadding = -15;
    static constexpr Color backgroundColor{0.39882815f, 0.42745543f, 1, 1};

    std::string message;
};

} // namespace tavro
