#pragma once

#include "platform/linux/applications/XWorkspace.h"
#include "platform/linux/audio/PulseAudioHardware.h"
#include "platform/linux/bus/BoundedBus.h"
#include "platform/linux/bus/GSettings.h"
#include "platform/linux/desktops/DesktopAppearance.h"
#include "platform/linux/desktops/RunningDesktop.h"
#include "platform/linux/input/QtEventMonitors.h"
#include "platform/linux/input/XHotKeyCenter.h"
#include "platform/linux/input/XKeyboard.h"
#include "platform/linux/menubar/TrayControlStrip.h"
#include "platform/linux/menubar/TrayStatusBar.h"
#include "platform/linux/notifications/BackgroundSilencing.h"
#include "platform/linux/notifications/XBubbles.h"
#include "platform/linux/process/BusActions.h"
#include "platform/linux/process/IdleInhibition.h"
#include "platform/linux/process/LinuxAccessibility.h"
#include "platform/linux/process/LinuxApplication.h"
#include "platform/linux/process/QtMainQueue.h"
#include "platform/linux/storage/AutostartEntry.h"
#include "platform/linux/storage/FetchURLSession.h"
#include "platform/linux/storage/PlistUserDefaults.h"
#include "platform/linux/storage/QtImages.h"
#include "platform/linux/storage/XdgFileManager.h"
#include "platform/linux/windows/DesktopWallpaper.h"
#include "platform/linux/windows/QtOpenPanels.h"
#include "platform/linux/windows/QtScreens.h"
#include "platform/linux/windows/QtWindowServer.h"
#include "platform/linux/windows/XWindowList.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/process/Bundle.h"
#include "platform/process/Machine.h"

#include <filesystem>
#include <memory>

namespace tavro {

/// A Linux desktop on an X server. It answers every version question as the newest generation.
class LinuxMachine final : public Machine {
public:
    /// The toolkit's application must exist, on the same X server.
    LinuxMachine(std::unique_ptr<XConnection> x, Log& log, TerminationSignals& signals, Views views,
                 std::filesystem::path defaultsFile);

    SystemVersion systemVersion() const override { return {14, 0}; }
    const Bundle& mainBundle() const override { return m_bundle; }
    AppService& appService() override { return m_loginItem; }
    Accessibility& accessibility() override { return m_accessibility; }
    BusActions& actions() override { return m_actions; }
    LinuxApplication& application() override { return m_application; }
    AudioHardware& audioHardware() override { return m_audioHardware; }
    ControlStrip& controlStrip() override { return m_controlStrip; }
    DisplaySleep& displaySleep() override { return m_idleInhibition; }
    FileManager& fileManager() override { return m_fileManager; }
    EventMonitors& eventMonitors() override { return m_eventMonitors; }
    HotKeyCenter& hotKeyCenter() override { return m_hotKeyCenter; }
    Images& images() override { return m_images; }
    KeyboardLayout& keyboardLayout() override { return m_keyboard; }
    LegacyLoginItems* legacyLoginItems() override { return nullptr; }
    Log& log() override { return m_log; }
    MainQueue& mainQueue() override { return m_mainQueue; }
    OpenPanels& openPanels() override { return m_openPanels; }
    Screens& screens() override { return m_screens; }
    StatusBar& statusBar() override { return m_statusBar; }
    URLSession* urlSession() override { return m_urlSession.get(); }
    NotificationSilencing* notificationSilencing() override { return &m_notificationSilencing; }
    std::optional<SystemServices> systemServices() override { return std::nullopt; }
    UserDefaults& userDefaults() override { return m_userDefaults; }
    WindowList& windowList() override { return m_windowList; }
    WindowServer& windowServer() override { return m_windowServer; }
    Workspace& workspace() override { return m_workspace; }

private:
    void finishStoring();

    // In the order of their making; those further down refer to those above, and end before them.
    std::unique_ptr<XConnection> m_x;
    Log& m_log;
    const Bundle m_bundle;
    QtMainQueue m_mainQueue;
    PulseAudioHardware m_audioHardware; // early, so that the server answers while the rest starts
    BoundedBus m_bus;                   // one for all, so that a silent service is waited for once
    const GSettings m_settings;
    const std::unique_ptr<Desktop> m_desktop;
    DesktopAppearance m_appearance;
    XKeyboard m_keyboard;
    QtEventMonitors m_eventMonitors;
    XHotKeyCenter m_hotKeyCenter;
    LinuxAccessibility m_accessibility;
    IdleInhibition m_idleInhibition;
    XBubbles m_bubbles;
    BackgroundSilencing m_notificationSilencing;
    PlistUserDefaults m_userDefaults;
    AutostartEntry m_loginItem;
    XdgFileManager m_fileManager;
    QtImages m_images;
    QtOpenPanels m_openPanels;
    QtScreens m_screens;
    DesktopSnapshots m_snapshots;
    const std::unique_ptr<URLSession> m_urlSession;
    DesktopWallpaper m_wallpaper;
    XWindowList m_windowList;
    QtWindowServer m_windowServer;
    XWorkspace m_workspace;
    LinuxApplication m_application;
    TrayStatusBar m_statusBar;
    TrayControlStrip m_controlStrip;
    BusActions m_actions;
};

} // namespace tavro
