#pragma once

#include "KeyboardShortcuts/Shortcut.h"

#include <functional>
#include <vector>

namespace tavro::KeyboardShortcuts {

/// Takes combinations as hot keys of the system, and routes their events. Knows neither names nor storage.
/// Main thread only.
class CarbonKeyboardShortcuts {
public:
    using Handler = std::function<void(const Shortcut&)>;

    /// A refusal is silent. Each call is a registration of its own.
    static void registerShortcut(const Shortcut& shortcut, Handler onKeyDown, Handler onKeyUp);
    /// Ends every registration of the combination.
    static void unregister(const Shortcut& shortcut);
    static void unregisterAll();

    /// Has the combinations of the system read anew, in the background.
    static void refreshSystemShortcuts();
    /// The combinations in use by the system itself, as last read; empty where they cannot be.
    static std::vector<Shortcut> systemShortcuts();
    static bool isTakenBySystem(const Shortcut& shortcut);

    CarbonKeyboardShortcuts() = delete;
};

} // namespace tavro::KeyboardShortcuts
