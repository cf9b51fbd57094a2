#pragma once

#include "platform/linux/desktops/DesktopBackground.h"
#include "platform/linux/desktops/DesktopLook.h"
#include "platform/linux/desktops/DesktopShortcut.h"

#include <optional>
#include <vector>

namespace tavro {

/// What is particular to one desktop environment, by its settings of the moment. One of which nothing is
/// known has no background and no shortcuts. For one thread, which an answer holds up for one bound at most.
class Desktop {
public:
    virtual ~Desktop() = default;
    /// None where it does not answer in time.
    virtual std::optional<DesktopBackground> background(const DesktopScreen& /*screen*/) {
        return std::nullopt;
    }
    /// The combinations that it uses itself. Those that cannot be read are left out.
    virtual std::vector<DesktopShortcut> shortcuts() { return {}; }
    /// Besides what it tells all programs through XSETTINGS. None where it does not answer in time.
    virtual std::optional<DesktopLook> look() { return std::nullopt; }
    /// The file in the user's configuration folder in which that stands; empty where there is none.
    virtual QString fileOfLook() const { return {}; }
};

} // namespace tavro
