#pragma once

namespace tavro {

/// An application of the simulated machine, from its launch until it quits.
enum class ApplicationID : int {
    system = 0, ///< the Dock, which owns the wallpaper and cannot be hidden
    self = 1,   ///< the program under test
};

} // namespace tavro
