#include "notifications/DoNotDisturb.h"

#include "notifications/MontereyDND.h"
#include "notifications/NCPrefs.h"
#include "notifications/SilencingRecord.h"
#include "notifications/SilencingRequests.h"
#include "platform/input/MouseEvents.h"
#include "platform/notifications/DistributedNotificationCenter.h"
#include "platform/notifications/Preferences.h"
#include "platform/notifications/RunningProcesses.h"
#include "platform/process/Accessibility.h"
#include "platform/process/Clock.h"
#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/Files.h"
#include "platform/storage/UserDefaults.h"
#include "platform/windows/Screens.h"

#include <chrono>

namespace tavro {

namespace {

using namespace std::chrono_literals;

constexpr SystemVersion bigSur{11, 0};
constexpr SystemVersion monterey{12, 0};
constexpr auto preferencesChanged = "com.apple.notificationcenterui.dndprefs_changed";
constexpr auto preferencesFile = "~/Library/Preferences/com.apple.ncprefs.plist";

SystemServices services() {
    return machine().systemServices().value();
}

void setPreference(const char* key, std::optional<PropertyList> value) {
    services().preferences.setValue(key, std::move(value), DoNotDisturb::notificationCenterDomain);
}

void announcePreferences() {
    services().preferences.synchronize(DoNotDisturb::notificationCenterDomain);
    services().distributedNotificationCenter.post(preferencesChanged, true);
}

// The notification centre reads its preferences when it starts; the system starts it again at once.
void writePreferences(bool isOn) {
    setPreference("doNotDisturb", isOn);
    setPreference("doNotDisturbDate",
                  isOn ? std::optional<PropertyList>(services().clock.now()) : std::nullopt);
    announcePreferences();
    DoNotDisturb::terminateNotificationCenter();
}

/// Option-click, as far as the system makes the events.
class OptionClick {
public:
    explicit OptionClick(Point location)
        : m_down(event(MouseEventType::leftMouseDown, location))
        , m_up(event(MouseEventType::leftMouseUp, location)) {}

    void post() const {
        for (const auto& event : {m_down, m_up})
            if (event)
                services().mouseEvents.post(EventTap::hid, *event);
    }

private:
    static std::optional<MouseEvent> event(MouseEventType type, Point location) {
        auto event = services().mouseEvents.create(EventSourceState::hidSystemState, type, location,
                                                   MouseButton::left);
        if (event)
            event->flags = eventFlagMaskAlternate;
        return event;
    }

    std::optional<MouseEvent> m_down;
    std::optional<MouseEvent> m_up;
};

} // namespace

// Each generation keeps the state elsewhere, and none has an interface for it.
bool DoNotDisturb::isEnabled() {
    if (machine().notificationSilencing())
        return SilencingRequests::shared().wasOn();
    if (machine().systemVersion() >= monterey)
        return MontereyDND::isEnabled();
    if (machine().systemVersion() >= bigSur)
        return isEnabledInNCPrefs();
    return services().preferences.appBooleanValue("doNotDisturb", notificationCenterDomain);
}

bool DoNotDisturb::isEnabledInNCPrefs() {
    const auto file = services().files.expandingTilde(preferencesFile);
    const auto bytes = services().files.contents(file);
    if (!bytes) {
        machine().log().print(file.string() + ": " + bytes.error().message());
        return false;
    }
    const auto isOn = NCPrefs::hasUserPref(services().propertyListDecoder, *bytes);
    if (!isOn)
        machine().log().print(isOn.error());
    return isOn && *isOn;
}

// The flag comes before the switch: what a crash leaves on is then known to be ours.
void DoNotDisturb::enable() {
    if (machine().notificationSilencing())
        return SilencingRequests::shared().add(true);
    SilencingRecord::begin(true);
    SilencingRecord::report(isEnabled());
    SilencingRecord::setFromTavro(true);
    if (isEnabled())
        return;
    if (machine().systemVersion() < bigSur)
        return writePreferences(true);
    machine().accessibility().isProcessTrusted(true);
    toggleByClick();
}

// What the user had switched on before ends with the presentation, too: the system does not say whose it is.
void DoNotDisturb::disable() {
    if (machine().notificationSilencing())
        return SilencingRequests::shared().add(false);
    SilencingRecord::begin(false);
    SilencingRecord::report(isEnabled());
    if (!SilencingRecord::isFromTavro() && !isEnabled())
        return;
    if (machine().systemVersion() >= bigSur) {
        toggleByClick();
        SilencingRecord::setFromTavro(false);
        return;
    }
    writePreferences(false); // and the flag stays
    refreshSchedule();
}

void DoNotDisturb::disableAbandoned() {
    if (machine().notificationSilencing() && SilencingRecord::isFromTavro())
        SilencingRequests::shared().add(false);
}

// The older systems end Do Not Disturb only when its schedule changes, so one comes and goes.
void DoNotDisturb::refreshSchedule() {
    setPreference("dndStart", 0);
    setPreference("dndEnd", 1440);
    services().clock.wait(400ms);
    setPreference("dndStart", std::nullopt);
    setPreference("dndEnd", std::nullopt);
    announcePreferences();
}

void DoNotDisturb::terminateNotificationCenter() {
    const auto processes = services().runningProcesses.withBundleIdentifier(notificationCenterDomain);
    if (!processes.empty())
        services().runningProcesses.forceTerminate(processes.front());
}

// An Option-click in the menu bar's corner is the user's own way to switch. The second click takes the
// pointer back to where the user had it: clicks count from the top, the pointer from the bottom.
void DoNotDisturb::toggleByClick() {
    const auto frame = machine().screens().mainScreen().value_or(Screen{}).frame;
    const auto pointer = services().mouseEvents.mouseLocation();
    const OptionClick target({frame.size.width - 15, frame.origin.y + 5});
    const OptionClick back({pointer.x, frame.size.height - pointer.y});
    target.post();
    services().clock.wait(100ms);
    back.post();
}

} // namespace tavro
