#pragma once

#include "platform/process/NotificationCenter.h"
#include "platform/windows/Screens.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

namespace tavro {

namespace ApplicationActivationOption {
inline constexpr unsigned ignoringOtherApps = 2;
}

inline constexpr const char* workspaceDidActivateApplication =
    "NSWorkspaceDidActivateApplicationNotification";

/// An application that was running when it was asked for. Requests to one that has gone are ignored.
class RunningApplication {
public:
    virtual ~RunningApplication() = default;
    /// Takes the application's windows off the screen until it is unhidden. Windows that its user had put
    /// away before stay as they are, then and later.
    virtual void hide() = 0;
    /// Brings back what `hide` took away, also when a process that has died since had called it. The windows
    /// of several applications come back together, in their former stacking order.
    virtual void unhide() = 0;
    virtual void activate(unsigned options) = 0;
    virtual bool isEqual(const RunningApplication& other) const = 0;
};

/// The applications and the desktop of the session. Main thread only.
class Workspace {
public:
    virtual ~Workspace() = default;
    virtual std::vector<std::shared_ptr<RunningApplication>> runningApplications() const = 0;
    /// The one that the user works in; null when there is none.
    virtual std::shared_ptr<RunningApplication> frontmostApplication() const = 0;
    /// The picture that the desktop shows on a screen, or none.
    virtual std::optional<std::filesystem::path> desktopImageURL(const Screen& screen) const = 0;
    /// Posts `workspaceDidActivateApplication` after another application became active.
    /// Opens an address with the program that the user has chosen for such.
    virtual void open(const std::string& url) = 0;
    virtual NotificationCenter& notificationCenter() = 0;
};

} // namespace tavro
