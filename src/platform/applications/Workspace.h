#pragma once

#include "platform/process/NotificationCenter.h"
#include "platform/windows/Screens.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavro {

class RunningApplication;

inline constexpr const char* workspaceDidActivateApplication =
    "NSWorkspaceDidActivateApplicationNotification";

/// The applications and the desktop of the session. Main thread only.
class Workspace {
public:
    virtual ~Workspace() = default;
    virtual std::vector<std::shared_ptr<RunningApplication>> runningApplications() const = 0;
    /// The one that the user works in, which may be this program with a window of its own; null when there is
    /// none.
    virtual std::shared_ptr<RunningApplication> frontmostApplication() const = 0;
    /// From now on no further window is hidden, not even where one of a hidden application appears before the
    /// user later. What is hidden stays so until it is unhidden.
    virtual void stopHiding() = 0;
    /// Unhides, in their former order, what processes of this program before this one hid and did not unhide;
    /// not what the user put away.
    virtual void unhideAbandoned() = 0;
    /// The picture that the desktop shows on a screen, or none.
    virtual std::optional<std::filesystem::path> desktopImageURL(const Screen& screen) const = 0;
    /// Opens an address with the program that the user has chosen for such.
    virtual void open(const std::string& url) = 0;
    /// Posts `workspaceDidActivateApplication` after another application became active.
    virtual NotificationCenter& notificationCenter() = 0;
};

} // namespace tavro
