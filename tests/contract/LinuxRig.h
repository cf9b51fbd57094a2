#pragma once

#include "AudioHardwareContract.h"
#include "HotKeyCenterContract.h"
#include "NotificationSilencingContract.h"
#include "Rig.h"

#include "support/AudioServer.h"
#include "support/ClientApplication.h"
#include "support/Input.h"
#include "support/NotificationServer.h"
#include "support/TemporaryFolder.h"
#include "support/Tray.h"
#include "support/XServer.h"

#include "platform/linux/LinuxMachine.h"
#include "platform/linux/StreamLog.h"

#include <map>
#include <memory>

namespace tavro {

/// The Linux machine in a private desktop. What the test waits for is the server's answer.
class LinuxRig {
public:
    LinuxRig();
    ~LinuxRig();

    Machine& machine() { return *m_machine; }
    bool waitUntil(const std::function<bool()>& condition);
    MainQueue::Duration now() const;
    void relaunch();

    std::filesystem::path folder() const { return m_folder.path(); }
    void writePicture(const std::filesystem::path& file, int width, int height, std::uint32_t color);

    void openWindow(const std::string& application, const std::string& title, Rect frame);
    void quit(const std::string& application);
    void clickWindow(const std::string& title);
    void minimise(const std::string& title) { m_server.minimise(m_windows.at(title)); }
    std::vector<std::string> shownTitles() const;
    std::optional<Rect> shownFrame(WindowNumber window) const;

    bool hasStatusItem();
    void click(EventType type, unsigned modifierFlags);
    bool menuIsOpen() const { return !m_server.menus().empty(); }
    void chooseLast();
    void closeMenu();

    /// The server knows a device by a name that no other has had.
    std::string addInputDevice(const std::string& name);
    std::string addOutputDevice(const std::string& name);
    void removeDevice(const std::string& uid) { m_audioServer.unplug(uid); }
    void setDefaultInput(const std::string& uid) { m_audioServer.makeDefault(uid); }
    void setDefaultOutput(const std::string& uid) { m_audioServer.makeDefault(uid); }
    void otherProgramSetsMute(const std::string& uid, bool mute) { m_audioServer.mute(uid, mute); }
    bool isMutedOnServer(const std::string& uid) { return m_audioServer.isMuted(uid); }

    bool showsANotification() { return notifications().showsANotification(); }
    void userSwitchesDoNotDisturbOn() { notifications().userSwitchesOn(); }

    void pressKey(std::uint32_t keyCode, std::uint32_t modifiers);
    void releaseKey(std::uint32_t keyCode) { m_input.release(key(keyCode)); }
    void releaseModifiers(std::uint32_t modifiers);
    bool otherProgramTakesKey(std::uint32_t keyCode, std::uint32_t modifiers);
    void otherProgramLetsGoOfKey(std::uint32_t keyCode, std::uint32_t modifiers);

private:
    static Input::Key key(std::uint32_t keyCode);
    std::unique_ptr<LinuxMachine> makeMachine();
    NotificationServer& notifications();

    TemporaryFolder m_folder;
    AudioServer m_audioServer;
    int m_addedDevices = 0;
    XServer m_server;
    Input m_input{m_server};
    Tray m_tray{m_server};
    StreamLog m_log;
    std::unique_ptr<LinuxMachine> m_machine;
    std::unique_ptr<NotificationServer> m_notifications; // runs from its first use on
    std::map<std::string, std::unique_ptr<ClientApplication>> m_applications;
    std::map<std::string, xcb_window_t> m_windows; // by title
};

static_assert(AudioRig<LinuxRig> && SilencingRig<LinuxRig> && KeyboardRig<LinuxRig>);

} // namespace tavro
