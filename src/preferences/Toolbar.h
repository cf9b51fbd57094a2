#pragma once

#include "preferences/PreferenceState.h"

#include <memory>
#include <string>
#include <vector>

namespace tavro {

/// The tabs of the preferences window. In points.
struct Toolbar {
    static constexpr double padding = 28;
    static constexpr double greatestWidth = 200;

    /// Shown as they stand, untranslated.
    std::vector<std::string> tabs;
    /// The index of the selected one, both ways.
    std::shared_ptr<PreferenceState> selectedTab;
};

} // namespace tavro
