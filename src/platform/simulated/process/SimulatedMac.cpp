#include "platform/simulated/process/SimulatedMac.h"

namespace tavro {

SimulatedMac::SimulatedMac(SystemVersion version)
    : m_version(version)
    , m_log(m_journal)
    , m_appService(m_journal)
    , m_accessibility(m_journal)
    , m_actions(m_mainQueue)
    , m_audioHardware(m_journal, m_mainQueue)
    , m_clock(m_journal, m_mainQueue)
    , m_controlStrip(m_journal)
    , m_fileManager(m_journal, m_mainQueue)
    , m_hotKeyCenter(m_journal, m_mainQueue)
    , m_images(m_log, m_mainQueue)
    , m_legacyLoginItems(m_journal)
    , m_openPanels(m_journal, m_mainQueue)
    , m_urlSession(m_journal)
    , m_distributedNotificationCenter(m_journal)
    , m_mouseEvents(m_journal)
    , m_notificationSilencing(m_journal, m_log, m_mainQueue)
    , m_preferences(m_journal)
    , m_userDefaults(m_journal, m_log, m_mainQueue)
    , m_systemNotificationCenter(version, m_journal, m_files, m_preferences, m_mouseEvents, m_accessibility,
                                 m_screens)
    , m_windowServer(version, m_journal, m_screens)
    , m_windowList(m_screens, m_windowServer)
    , m_workspace(m_journal, m_mainQueue, m_windowServer)
    , m_application(m_journal, m_mainQueue, m_userDefaults, m_workspace, [this] { endProcess(); })
    , m_statusBar(m_journal, m_application) {
    m_screens.set({SimulatedScreens::screen({{0, 0}, {1920, 1080}}, 1),
                   SimulatedScreens::screen({{1920, 180}, {1440, 900}}, 2)});
    using Audio = SimulatedAudioHardware;
    m_audioHardware.setDefaultInput(m_audioHardware.plugIn(Audio::microphone("Built-in Microphone")));
    m_audioHardware.setDefaultOutput(m_audioHardware.plugIn(Audio::speaker("Built-in Speaker")));
}

std::optional<SystemServices> SimulatedMac::systemServices() {
    if (m_hasSilencing)
        return std::nullopt;
    return SystemServices{m_clock,
                          m_distributedNotificationCenter,
                          m_files,
                          m_mouseEvents,
                          m_preferences,
                          m_propertyListDecoder,
                          m_systemNotificationCenter};
}

void SimulatedMac::endProcess() {
    m_application.endProcess();
    m_actions.endProcess();
    m_statusBar.endProcess();
    m_workspace.endSelf();
    m_audioHardware.endProcess();
    m_controlStrip.endProcess();
    m_eventMonitors.endProcess();
    m_hotKeyCenter.endProcess();
    m_openPanels.endProcess();
    m_urlSession.endProcess();
    m_mainQueue.clear();
    m_userDefaults.endProcess();
}

} // namespace tavro
