#pragma once

#include "platform/process/ObserverList.h"
#include "popover/CustomToogleStyle.h"
#include "popover/InAppAlert.h"
#include "settings/Constants.h"
#include "settings/UserSettings.h"
#include "update/VersionObserver.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace tavro {

class Shell;

/// What the popover shows, from top to bottom: the switch of presentation mode, a divider, one row for each
/// option and, where a newer version is known of, a banner. The texts are keys of the translations. Main
/// thread only.
class ContentView {
public:
    static constexpr const char* headerTitle = "Presentation mode";
    static constexpr double headerFontSize = 22;
    static constexpr double headerBottomPadding = Constants::popoverPadding / 2.3;
    static constexpr double rowBottomPadding = 10;
    /// Of the switch, with an ease-out curve.
    static constexpr double animationSeconds = 0.2;

    static const CustomToogleStyle& headerStyle();

    ContentView(UserSettings& settings, VersionObserver& versionObserver, Shell& appDelegate);

    /// None where there is nothing to show.
    std::optional<InAppAlert> banner() const;
    /// The observer is notified before anything that shows changes.
    [[nodiscard]] std::vector<Observation> willChange(const std::function<void()>& observer) const;

    /// Inverts the mode at once; when the animation is over, the popover closes and the desktop follows.
    void tapHeader() const;
    /// Inverts the option. A wallpaper that is switched on before there is one opens the preferences.
    void tapOption(std::size_t index) const;
    /// Opens the page about the versions.
    void tapBanner() const;

    UserSettings& settings;
    VersionObserver& versionObserver;
    Shell& appDelegate;
};

} // namespace tavro
