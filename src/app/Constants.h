#pragma once

#include <array>

namespace tavro {

/// The application's fixed values.
struct Constants {
    struct CatalogueEntry {
        const char* id;
        const char* name;
        bool defaultIsOn;
    };

    /// In the order in which rows are shown and features are switched.
    static constexpr std::array optionCatalogue{
        CatalogueEntry{"hideDesktop", "Hide desktop icons", true},
        CatalogueEntry{"disableNotification", "Disable notification", true},
        CatalogueEntry{"hideApps", "Hide active apps", true},
        CatalogueEntry{"muteSpeaker", "Turn off speaker", false},
        CatalogueEntry{"changeWallpaper", "Change wallpaper", false},
    };

    /// User-defaults key of the presentation-mode flag.
    static constexpr const char* tavroKey = "tavro";

    // Raw names of the global shortcuts.
    static constexpr const char* tavroMuteShortcut = "tavroMuteShortcut";
    static constexpr const char* tavroGlobalShortcut = "tavroGlobalShortcut";

    Constants() = delete;
};

} // namespace tavro
