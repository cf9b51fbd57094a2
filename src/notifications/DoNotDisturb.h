#pragma once

namespace tavro {

/// Keeps the system's notifications back, and lets them through again: by the switch that the machine offers,
/// or by what the running generation of the system needs. Whatever fails is logged, counts as off, and stops
/// nothing. Main thread only.
class DoNotDisturb {
public:
    static constexpr const char* notificationCenterDomain = "com.apple.notificationcenterui";

    /// Whether Do Not Disturb is on now, whoever switched it on. With a switch of the machine's own, which
    /// answers later: whether it was on when that was last asked.
    static bool isEnabled();
    static void enable();
    /// Switches it off where it was asked for here or is on, also where the user had switched it on.
    static void disable();
    /// Switches off what a former process has asked for and left on, where the machine has a switch of its
    /// own: a click is blind, and would switch it on where it is off.
    static void disableAbandoned();

    /// What each generation's way is made of.
    static void toggleByClick();
    static bool isEnabledInNCPrefs();
    static void terminateNotificationCenter();
    static void refreshSchedule();

    DoNotDisturb() = delete;
};

} // namespace tavro
