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
    /// User-defaults key of the flag that a custom wallpaper is in use.
    static constexpr const char* wallpaperFileKey = "wallpaperFile";
    /// User-defaults key of the flag that the application has been launched before.
    static constexpr const char* launchedKey = "launchedBefore";

    /// The product's page about its versions.
    static const char* const changelogURL;
    /// Where the record of the newest published version is.
    static const char* const versionRecordURL;

    // Raw names of the global shortcuts.
    static constexpr const char* tavroMuteShortcut = "tavroMuteShortcut";
    static constexpr const char* tavroGlobalShortcut = "tavroGlobalShortcut";

    // In points.
    static constexpr double popoverWidth = 340;
    static constexpr double popoverHeight = 400;
    static constexpr double popoverPadding = 20;
    static constexpr double popoverContentWidth = popoverWidth - 2 * popoverPadding;

    Constants() = delete;
};

} // namespace tavro
