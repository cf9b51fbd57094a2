#pragma once

#include "platform/process/Published.h"

namespace tavro {

/// Which page of the preferences shows.
struct PreferenceState {
    Published<int> pageIndex{0};
};

} // namespace tavro
