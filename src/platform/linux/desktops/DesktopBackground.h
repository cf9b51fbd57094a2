#pragma once

#include "picture/BackgroundStyle.h"

#include <QRect>

#include <filesystem>
#include <optional>
#include <string>

namespace tavro {

/// A screen, as the settings of desktops tell it from others.
struct DesktopScreen {
    /// "HDMI-1".
    std::string connector;
    /// The first one is the primary one.
    int number = 0;
    /// The one that the user is on.
    int workspace = 0;
    /// Of the root window.
    QRect pixels;
};

/// What a desktop is set to show on a screen.
struct DesktopBackground {
    /// None where there are only colours.
    std::optional<std::filesystem::path> picture;
    BackgroundStyle style;
    /// One picture over all screens, of which each shows a part.
    bool spansScreens = false;
    /// Another workspace may have another one.
    bool isOfWorkspace = false;

    bool operator==(const DesktopBackground&) const = default;
};

} // namespace tavro
