#pragma once

namespace tavro {

class Clock;
class DistributedNotificationCenter;
class Files;
class MouseEvents;
class Preferences;
class PropertyListDecoder;
class RunningProcesses;

/// What it takes to silence the notifications of the system that the product was conceived for, whose
/// generations have no switch for programs. A machine of another kind has `NotificationSilencing` instead.
struct SystemServices {
    Clock& clock;
    DistributedNotificationCenter& distributedNotificationCenter;
    Files& files;
    MouseEvents& mouseEvents;
    Preferences& preferences;
    PropertyListDecoder& propertyListDecoder;
    RunningProcesses& runningProcesses;
};

} // namespace tavro
