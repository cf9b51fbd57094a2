#pragma once

#include "platform/windows/Geometry.h"
#include "settings/Constants.h"

namespace tavro {

/// How an option's row looks: a label, and at the other end a check mark while the option is on. In points.
struct SimpleToogleStyle {
    static constexpr double labelWidth = Constants::popoverContentWidth - 30;
    static constexpr double spacing = 8;
    static constexpr Size checkSize{16, 12};
    /// Centred in what the popover has.
    static constexpr double width = labelWidth + spacing + checkSize.width;
    static constexpr const char* checkName = "check";
};

} // namespace tavro
