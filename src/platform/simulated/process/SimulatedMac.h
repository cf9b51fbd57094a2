#pragma once

#include "platform/plist/LibPlistDecoder.h"
#include "platform/process/Bundle.h"
#include "platform/process/Machine.h"
#include "platform/simulated/applications/SimulatedWorkspace.h"
#include "platform/simulated/audio/SimulatedAudioHardware.h"
#include "platform/simulated/input/SimulatedEventMonitors.h"
#include "platform/simulated/input/SimulatedHotKeyCenter.h"
#include "platform/simulated/input/SimulatedKeyboardLayout.h"
#include "platform/simulated/input/SimulatedMouseEvents.h"
#include "platform/simulated/menubar/SimulatedControlStrip.h"
#include "platform/simulated/menubar/SimulatedStatusBar.h"
#include "platform/simulated/notifications/SimulatedDistributedNotificationCenter.h"
#include "platform/simulated/notifications/SimulatedNotificationCenter.h"
#include "platform/simulated/notifications/SimulatedNotificationSilencing.h"
#include "platform/simulated/notifications/SimulatedPreferences.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedAccessibility.h"
#include "platform/simulated/process/SimulatedActions.h"
#include "platform/simulated/process/SimulatedApplication.h"
#include "platform/simulated/process/SimulatedClock.h"
#include "platform/simulated/process/SimulatedDisplaySleep.h"
#include "platform/simulated/process/SimulatedLog.h"
#include "platform/simulated/process/SimulatedMainQueue.h"
#include "platform/simulated/storage/SimulatedAppService.h"
#include "platform/simulated/storage/SimulatedFileManager.h"
#include "platform/simulated/storage/SimulatedFiles.h"
#include "platform/simulated/storage/SimulatedImages.h"
#include "platform/simulated/storage/SimulatedLegacyLoginItems.h"
#include "platform/simulated/storage/SimulatedURLSession.h"
#include "platform/simulated/storage/SimulatedUserDefaults.h"
#include "platform/simulated/windows/SimulatedOpenPanels.h"
#include "platform/simulated/windows/SimulatedScreens.h"
#include "platform/simulated/windows/SimulatedWindowList.h"
#include "platform/simulated/windows/SimulatedWindowServer.h"

namespace tavro {

/// A computer in memory, of any system generation from 10.15 to 14: it has state that can be looked at, users
/// and other programs that tests play, faults with names, a clock that only tests move, and a journal.
/// It outlives the processes that run on it, one after the other.
class SimulatedMac final : public Machine {
public:
    /// Starts with two screens side by side, their displays numbered 1 and 2, with a microphone and a
    /// speaker, numbered 41 and 42, and nobody at work.
    explicit SimulatedMac(SystemVersion version = {14, 0});

    SystemVersion systemVersion() const override { return m_version; }
    const Bundle& mainBundle() const override { return bundle; }
    SimulatedAppService& appService() override { return m_appService; }
    SimulatedAccessibility& accessibility() override { return m_accessibility; }
    SimulatedActions& actions() override { return m_actions; }
    SimulatedDisplaySleep& displaySleep() override { return m_displaySleep; }
    SimulatedApplication& application() override { return m_application; }
    SimulatedAudioHardware& audioHardware() override { return m_audioHardware; }
    SimulatedControlStrip& controlStrip() override { return m_controlStrip; }
    SimulatedFileManager& fileManager() override { return m_fileManager; }
    SimulatedEventMonitors& eventMonitors() override { return m_eventMonitors; }
    SimulatedHotKeyCenter& hotKeyCenter() override { return m_hotKeyCenter; }
    SimulatedImages& images() override { return m_images; }
    SimulatedKeyboardLayout& keyboardLayout() override { return m_keyboardLayout; }
    SimulatedLegacyLoginItems* legacyLoginItems() override {
        return m_version < SystemVersion{13, 0} ? &m_legacyLoginItems : nullptr;
    }
    SimulatedLog& log() override { return m_log; }
    SimulatedMainQueue& mainQueue() override { return m_mainQueue; }
    SimulatedOpenPanels& openPanels() override { return m_openPanels; }
    SimulatedScreens& screens() override { return m_screens; }
    SimulatedStatusBar& statusBar() override { return m_statusBar; }
    SimulatedURLSession* urlSession() override { return isOffline ? nullptr : &m_urlSession; }
    SimulatedNotificationSilencing* notificationSilencing() override {
        return m_hasSilencing ? &m_notificationSilencing : nullptr;
    }
    std::optional<SystemServices> systemServices() override;
    SimulatedUserDefaults& userDefaults() override { return m_userDefaults; }
    SimulatedWindowList& windowList() override { return m_windowList; }
    SimulatedWindowServer& windowServer() override { return m_windowServer; }
    SimulatedWorkspace& workspace() override { return m_workspace; }

    /// From now on this is a machine of another kind, with a switch of its own for notifications.
    SimulatedNotificationSilencing& addNotificationSwitch() {
        m_hasSilencing = true;
        return m_notificationSilencing;
    }

    // The pieces of the system services.
    SimulatedClock& clock() { return m_clock; }
    SimulatedFiles& files() { return m_files; }
    SimulatedMouseEvents& mouseEvents() { return m_mouseEvents; }
    SimulatedNotificationCenter& systemNotificationCenter() { return m_systemNotificationCenter; }
    SimulatedPreferences& preferences() { return m_preferences; }

    Journal& journal() { return m_journal; }

    /// The application that is installed.
    Bundle bundle{"com.vantrelo.TavroPRO", {{"CFBundleShortVersionString", "2.9.3"}}};
    /// The machine was built to ask nothing of the network.
    bool isOffline = false;

    /// The process is gone, as after a kill: so are its windows, its status items, its queued blocks, and the
    /// user defaults that had not reached the disk. What it did to other programs stays.
    void endProcess();

private:
    const SystemVersion m_version;
    Journal m_journal;
    SimulatedLog m_log;
    SimulatedMainQueue m_mainQueue;
    SimulatedAppService m_appService;
    SimulatedAccessibility m_accessibility;
    SimulatedActions m_actions;
    SimulatedDisplaySleep m_displaySleep;
    SimulatedAudioHardware m_audioHardware;
    SimulatedClock m_clock;
    SimulatedControlStrip m_controlStrip;
    SimulatedFileManager m_fileManager;
    SimulatedEventMonitors m_eventMonitors;
    SimulatedHotKeyCenter m_hotKeyCenter;
    SimulatedImages m_images;
    SimulatedKeyboardLayout m_keyboardLayout;
    SimulatedLegacyLoginItems m_legacyLoginItems;
    SimulatedOpenPanels m_openPanels;
    SimulatedURLSession m_urlSession;
    SimulatedDistributedNotificationCenter m_distributedNotificationCenter;
    SimulatedFiles m_files;
    SimulatedMouseEvents m_mouseEvents;
    SimulatedNotificationSilencing m_notificationSilencing;
    SimulatedPreferences m_preferences;
    LibPlistDecoder m_propertyListDecoder;
    SimulatedUserDefaults m_userDefaults;
    SimulatedScreens m_screens;
    SimulatedNotificationCenter m_systemNotificationCenter;
    SimulatedWindowServer m_windowServer;
    SimulatedWindowList m_windowList;
    SimulatedWorkspace m_workspace;
    SimulatedApplication m_application;
    SimulatedStatusBar m_statusBar;
    bool m_hasSilencing = false;
};

} // namespace tavro
