#pragma once

#include "platform/SystemVersion.h"

namespace tavro {

class Application;
class AudioHardware;
class ControlStrip;
class EventMonitors;
class HotKeyCenter;
class Images;
class KeyboardLayout;
class Log;
class MainQueue;
class Screens;
class StatusBar;
class UserDefaults;
class WindowList;
class WindowServer;
class Workspace;

/// Everything the product asks of the computer it runs on. Each service lives as long as the machine.
class Machine {
public:
    virtual ~Machine() = default;
    virtual SystemVersion systemVersion() const = 0;
    virtual Application& application() = 0;
    virtual AudioHardware& audioHardware() = 0;
    virtual ControlStrip& controlStrip() = 0;
    virtual EventMonitors& eventMonitors() = 0;
    virtual HotKeyCenter& hotKeyCenter() = 0;
    virtual Images& images() = 0;
    virtual KeyboardLayout& keyboardLayout() = 0;
    virtual Log& log() = 0;
    virtual MainQueue& mainQueue() = 0;
    virtual Screens& screens() = 0;
    virtual StatusBar& statusBar() = 0;
    virtual UserDefaults& userDefaults() = 0;
    virtual WindowList& windowList() = 0;
    virtual WindowServer& windowServer() = 0;
    virtual Workspace& workspace() = 0;
};

} // namespace tavro
