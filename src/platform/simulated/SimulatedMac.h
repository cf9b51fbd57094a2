#pragma once

#include "platform/Machine.h"
#include "platform/simulated/Journal.h"
#include "platform/simulated/SimulatedApplication.h"
#include "platform/simulated/SimulatedAudioHardware.h"
#include "platform/simulated/SimulatedControlStrip.h"
#include "platform/simulated/SimulatedEventMonitors.h"
#include "platform/simulated/SimulatedHotKeyCenter.h"
#include "platform/simulated/SimulatedImages.h"
#include "platform/simulated/SimulatedKeyboardLayout.h"
#include "platform/simulated/SimulatedLog.h"
#include "platform/simulated/SimulatedMainQueue.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedStatusBar.h"
#include "platform/simulated/SimulatedUserDefaults.h"
#include "platform/simulated/SimulatedWindowList.h"
#include "platform/simulated/SimulatedWindowServer.h"
#include "platform/simulated/SimulatedWorkspace.h"

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
    SimulatedApplication& application() override { return m_application; }
    SimulatedAudioHardware& audioHardware() override { return m_audioHardware; }
    SimulatedControlStrip& controlStrip() override { return m_controlStrip; }
    SimulatedEventMonitors& eventMonitors() override { return m_eventMonitors; }
    SimulatedHotKeyCenter& hotKeyCenter() override { return m_hotKeyCenter; }
    SimulatedImages& images() override { return m_images; }
    SimulatedKeyboardLayout& keyboardLayout() override { return m_keyboardLayout; }
    SimulatedLog& log() override { return m_log; }
    SimulatedMainQueue& mainQueue() override { return m_mainQueue; }
    SimulatedScreens& screens() override { return m_screens; }
    SimulatedStatusBar& statusBar() override { return m_statusBar; }
    SimulatedUserDefaults& userDefaults() override { return m_userDefaults; }
    SimulatedWindowList& windowList() override { return m_windowList; }
    SimulatedWindowServer& windowServer() override { return m_windowServer; }
    SimulatedWorkspace& workspace() override { return m_workspace; }

    Journal& journal() { return m_journal; }

    /// The process is gone, as after a kill: so are its windows, its status items, its queued blocks, and the
    /// user defaults that had not reached the disk. What it did to other programs stays.
    void endProcess();

private:
    const SystemVersion m_version;
    Journal m_journal;
    SimulatedLog m_log;
    SimulatedMainQueue m_mainQueue;
    SimulatedAudioHardware m_audioHardware;
    SimulatedControlStrip m_controlStrip;
    SimulatedEventMonitors m_eventMonitors;
    SimulatedHotKeyCenter m_hotKeyCenter;
    SimulatedImages m_images;
    SimulatedKeyboardLayout m_keyboardLayout;
    SimulatedUserDefaults m_userDefaults;
    SimulatedScreens m_screens;
    SimulatedWindowServer m_windowServer;
    SimulatedWindowList m_windowList;
    SimulatedWorkspace m_workspace;
    SimulatedApplication m_application;
    SimulatedStatusBar m_statusBar;
};

} // namespace tavro
