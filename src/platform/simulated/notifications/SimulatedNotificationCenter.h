#pragma once

#include "platform/notifications/RunningProcesses.h"
#include "platform/process/SystemVersion.h"
#include "platform/simulated/input/SimulatedMouseEvents.h"
#include "platform/simulated/notifications/SimulatedPreferences.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedAccessibility.h"
#include "platform/simulated/storage/SimulatedFiles.h"
#include "platform/simulated/windows/SimulatedScreens.h"

#include <optional>

namespace tavro {

/// The system's Notification Centre: the process that shows notifications, which the system starts again when
/// it ends. From version 11 on an Option-click at the right end of the menu bar switches Do Not Disturb,
/// whose state then stands in the user's files; before, the process takes it from its preferences when it
/// starts.
class SimulatedNotificationCenter final : public RunningProcesses {
public:
    static constexpr const char* identifier = "com.apple.notificationcenterui";
    static constexpr const char* preferencesFile = "Library/Preferences/com.apple.ncprefs.plist";
    static constexpr const char* assertionsFile = "Library/DoNotDisturb/DB/Assertions.json";
    static constexpr const char* configurationsFile = "Library/DoNotDisturb/DB/ModeConfigurations.json";

    SimulatedNotificationCenter(SystemVersion version, Journal& journal, SimulatedFiles& files,
                                SimulatedPreferences& preferences, SimulatedMouseEvents& mouse,
                                SimulatedAccessibility& accessibility, const SimulatedScreens& screens);

    std::vector<ProcessID> withBundleIdentifier(const std::string& identifier) const override;
    void forceTerminate(ProcessID process) override;

    /// Whether notifications are kept back.
    bool isSilent() const { return m_isSilent; }
    void userSwitches(bool isSilent);
    /// There is no such process, and the system does not start one.
    void remove() { m_process.reset(); }

private:
    void start();
    void receive(const MouseEvent& event);
    bool isOptionEventAtMenuBarEnd(const MouseEvent& event) const;
    void setSilent(bool isSilent);

    const SystemVersion m_version;
    Journal& m_journal;
    SimulatedFiles& m_files;
    SimulatedPreferences& m_preferences;
    SimulatedAccessibility& m_accessibility;
    const SimulatedScreens& m_screens;
    Observation m_mouse;
    std::optional<ProcessID> m_process;
    int m_started = 0;
    bool m_isPressed = false;
    bool m_isSilent = false;
};

} // namespace tavro
