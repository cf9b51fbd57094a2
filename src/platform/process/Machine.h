#pragma once

#include "platform/notifications/SystemServices.h"
#include "platform/process/SystemVersion.h"

#include <optional>

namespace tavro {

struct Bundle;

class AppService;
class Accessibility;
class Actions;
class Application;
class AudioHardware;
class ControlStrip;
class DisplaySleep;
class EventMonitors;
class FileManager;
class HotKeyCenter;
class Images;
class KeyboardLayout;
class LegacyLoginItems;
class Log;
class MainQueue;
class NotificationSilencing;
class OpenPanels;
class Screens;
class StatusBar;
class URLSession;
class UserDefaults;
class WindowList;
class WindowServer;
class Workspace;

/// Everything the product asks of the computer it runs on. Each service lives as long as the machine.
class Machine {
public:
    virtual ~Machine() = default;
    /// By which features choose their mechanism. A machine of another kind answers as the newest generation.
    virtual SystemVersion systemVersion() const = 0;
    virtual const Bundle& mainBundle() const = 0;
    virtual AppService& appService() = 0;
    virtual Accessibility& accessibility() = 0;
    virtual Actions& actions() = 0;
    virtual Application& application() = 0;
    virtual AudioHardware& audioHardware() = 0;
    virtual ControlStrip& controlStrip() = 0;
    virtual DisplaySleep& displaySleep() = 0;
    virtual FileManager& fileManager() = 0;
    virtual EventMonitors& eventMonitors() = 0;
    virtual HotKeyCenter& hotKeyCenter() = 0;
    virtual Images& images() = 0;
    virtual KeyboardLayout& keyboardLayout() = 0;
    /// Null on a machine of generation 13 or later.
    virtual LegacyLoginItems* legacyLoginItems() = 0;
    virtual Log& log() = 0;
    virtual MainQueue& mainQueue() = 0;
    virtual OpenPanels& openPanels() = 0;
    virtual Screens& screens() = 0;
    virtual StatusBar& statusBar() = 0;
    /// Null on a machine that was built to ask nothing of the network.
    virtual URLSession* urlSession() = 0;
    /// Null where notifications are silenced through the system services.
    virtual NotificationSilencing* notificationSilencing() = 0;
    /// None where there is `notificationSilencing`.
    virtual std::optional<SystemServices> systemServices() = 0;
    virtual UserDefaults& userDefaults() = 0;
    virtual WindowList& windowList() = 0;
    virtual WindowServer& windowServer() = 0;
    virtual Workspace& workspace() = 0;
};

} // namespace tavro
