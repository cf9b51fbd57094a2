#pragma once

#include "platform/Machine.h"
#include "platform/linux/LinuxApplication.h"
#include "platform/linux/PlistUserDefaults.h"
#include "platform/linux/PulseAudioHardware.h"
#include "platform/linux/QtEventMonitors.h"
#include "platform/linux/QtImages.h"
#include "platform/linux/QtMainQueue.h"
#include "platform/linux/QtScreens.h"
#include "platform/linux/QtWindowServer.h"
#include "platform/linux/TrayControlStrip.h"
#include "platform/linux/TrayStatusBar.h"
#include "platform/linux/XConnection.h"
#include "platform/linux/XHotKeyCenter.h"
#include "platform/linux/XKeyboard.h"
#include "platform/linux/XWindowList.h"
#include "platform/linux/XWorkspace.h"

#include <filesystem>
#include <memory>

namespace tavro {

/// A Linux desktop on an X server. It answers every version question as the newest generation.
class LinuxMachine final : public Machine {
public:
    /// The toolkit's application must exist, on the same X server.
    LinuxMachine(std::unique_ptr<XConnection> x, Log& log, TerminationSignals& signals, ViewPainter painter,
                 std::filesystem::path defaultsFile);

    SystemVersion systemVersion() const override { return {14, 0}; }
    LinuxApplication& application() override { return m_application; }
    AudioHardware& audioHardware() override { return m_audioHardware; }
    ControlStrip& controlStrip() override { return m_controlStrip; }
    EventMonitors& eventMonitors() override { return m_eventMonitors; }
    HotKeyCenter& hotKeyCenter() override { return m_hotKeyCenter; }
    Images& images() override { return m_images; }
    KeyboardLayout& keyboardLayout() override { return m_keyboard; }
    Log& log() override { return m_log; }
    MainQueue& mainQueue() override { return m_mainQueue; }
    Screens& screens() override { return m_screens; }
    StatusBar& statusBar() override { return m_statusBar; }
    UserDefaults& userDefaults() override { return m_userDefaults; }
    WindowList& windowList() override { return m_windowList; }
    WindowServer& windowServer() override { return m_windowServer; }
    Workspace& workspace() override { return m_workspace; }

private:
    std::unique_ptr<XConnection> m_x;
    Log& m_log;
    QtMainQueue m_mainQueue;
    PulseAudioHardware m_audioHardware; // early, so that the server answers while the rest starts
    XKeyboard m_keyboard;
    QtEventMonitors m_eventMonitors;
    XHotKeyCenter m_hotKeyCenter;
    PlistUserDefaults m_userDefaults;
    QtImages m_images;
    QtScreens m_screens;
    XWindowList m_windowList;
    QtWindowServer m_windowServer;
    XWorkspace m_workspace;
    LinuxApplication m_application;
    TrayStatusBar m_statusBar;
    TrayControlStrip m_controlStrip;
};

} // namespace tavro
