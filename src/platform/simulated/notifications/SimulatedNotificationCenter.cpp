#include "platform/simulated/notifications/SimulatedNotificationCenter.h"

#include "platform/plist/PlistNode.h"

#include <utility>

namespace tavro {

namespace {

constexpr SystemVersion bigSur{11, 0};
constexpr SystemVersion monterey{12, 0};
constexpr auto noSchedules = R"({"data":[{"modeConfigurations":{}}]})";

PropertyList::Data encoded(const PropertyList& value) {
    const auto bytes = formatPlistBinary(toPlist(value));
    return {bytes.begin(), bytes.end()};
}

} // namespace

SimulatedNotificationCenter::SimulatedNotificationCenter(
    SystemVersion version, Journal& journal, SimulatedFiles& files, SimulatedPreferences& preferences,
    SimulatedMouseEvents& mouse, SimulatedAccessibility& accessibility, const SimulatedScreens& screens)
    : m_version(version)
    , m_journal(journal)
    , m_files(files)
    , m_preferences(preferences)
    , m_accessibility(accessibility)
    , m_screens(screens)
    , m_mouse(mouse.didPost([this](const MouseEvent& event) { receive(event); })) {
    if (m_version >= monterey)
        m_files.write(configurationsFile, noSchedules);
    if (m_version >= bigSur)
        setSilent(false);
    start();
}

std::vector<ProcessID> SimulatedNotificationCenter::withBundleIdentifier(const std::string& wanted) const {
    return m_process && wanted == identifier ? std::vector{*m_process} : std::vector<ProcessID>{};
}

void SimulatedNotificationCenter::forceTerminate(ProcessID process) {
    m_journal.record("runningProcesses.forceTerminate", process == m_process ? identifier : "nobody");
    if (process == m_process)
        start();
}

void SimulatedNotificationCenter::userSwitches(bool isSilent) {
    if (m_version < bigSur)
        m_preferences.otherProgramSets("doNotDisturb", isSilent, identifier);
    setSilent(isSilent);
}

void SimulatedNotificationCenter::start() {
    m_process = ProcessID(200 + m_started++);
    if (m_version >= bigSur)
        return;
    const auto preferences = m_preferences.synchronized(identifier);
    const auto isOn = preferences.find("doNotDisturb");
    m_isSilent = isOn != preferences.end() && isOn->second.boolValue();
}

void SimulatedNotificationCenter::receive(const MouseEvent& event) {
    const bool isDown = event.type == MouseEventType::leftMouseDown;
    const bool wasPressed = std::exchange(m_isPressed, isDown && isOptionEventAtMenuBarEnd(event));
    if (!isDown && wasPressed && isOptionEventAtMenuBarEnd(event) && m_version >= bigSur)
        setSilent(!m_isSilent);
}

bool SimulatedNotificationCenter::isOptionEventAtMenuBarEnd(const MouseEvent& event) const {
    constexpr double clockWidth = 30, menuBarHeight = 24;
    const auto screen = m_screens.mainScreen();
    const auto width = screen ? screen->frame.size.width : 0;
    return screen && m_accessibility.isTrusted && event.flags == eventFlagMaskAlternate &&
           event.location.x > width - clockWidth && event.location.x < width && event.location.y >= 0 &&
           event.location.y < menuBarHeight;
}

void SimulatedNotificationCenter::setSilent(bool isSilent) {
    m_isSilent = isSilent;
    if (m_version >= monterey) {
        const std::string records = isSilent ? R"([{"assertionUUID":"1"}])" : "[]";
        m_files.write(assertionsFile, R"({"data":[{"storeAssertionRecords":)" + records + "}]}");
    } else if (m_version >= bigSur) {
        PropertyList::Dictionary preferences{{"dndDisplayLock", false}};
        if (isSilent)
            preferences.emplace("userPref", PropertyList::Dictionary{{"enabled", true}});
        m_files.write(preferencesFile, formatPlistBinary(toPlist(
                                           PropertyList::Dictionary{{"dnd_prefs", encoded(preferences)}})));
    }
}

} // namespace tavro
