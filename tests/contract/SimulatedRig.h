#pragma once

#include "AudioHardwareContract.h"
#include "HotKeyCenterContract.h"
#include "NotificationSilencingContract.h"
#include "Rig.h"

#include "platform/simulated/SimulatedMac.h"

#include <map>

namespace tavro {

/// The simulated Mac, where everything takes effect at once or when the main queue has run.
class SimulatedRig {
public:
    SimulatedRig();
    ~SimulatedRig();

    Machine& machine() { return m_mac; }
    bool waitUntil(const std::function<bool()>& condition);
    MainQueue::Duration now() const { return m_mac.mainQueue().now(); }
    void relaunch();

    const std::filesystem::path& folder() const { return m_folder; }
    void writePicture(const std::filesystem::path& file, int width, int height, std::uint32_t color);

    void openWindow(const std::string& application, const std::string& title, Rect frame);
    void quit(const std::string& application);
    void clickWindow(const std::string& title) { m_mac.workspace().clickWindow(number(title)); }
    void minimise(const std::string& title) { m_mac.workspace().minimise(number(title)); }
    std::vector<std::string> shownTitles() const;
    std::optional<Rect> shownFrame(WindowNumber window) const;

    bool hasStatusItem() const { return !m_mac.statusBar().items().empty(); }
    void click(EventType type, unsigned modifierFlags);
    bool menuIsOpen() const { return m_mac.statusBar().openMenu() != nullptr; }
    void chooseLast() { m_mac.statusBar().choose(m_mac.statusBar().openMenu()->items.back().title); }
    void closeMenu() { m_mac.statusBar().closeMenu(); }

    std::string addInputDevice(const std::string& name);
    std::string addOutputDevice(const std::string& name);
    void removeDevice(const std::string& uid) { audio().unplug(device(uid)); }
    void setDefaultInput(const std::string& uid) { audio().setDefaultInput(device(uid)); }
    void setDefaultOutput(const std::string& uid) { audio().setDefaultOutput(device(uid)); }
    void otherProgramSetsMute(const std::string& uid, bool mute) {
        audio().otherProgramSetsMute(device(uid), mute);
    }
    bool isMutedOnServer(const std::string& uid) { return audio().isMuted(device(uid)).value(); }

    bool showsANotification() { return !m_silencing.state; }
    void userSwitchesDoNotDisturbOn() { m_silencing.state = true; }

    void pressKey(std::uint32_t keyCode, std::uint32_t modifiers);
    void releaseKey(std::uint32_t keyCode) { m_mac.hotKeyCenter().release(keyCode); }
    void releaseModifiers(std::uint32_t modifiers) { m_heldModifiers &= ~modifiers; }
    bool otherProgramTakesKey(std::uint32_t keyCode, std::uint32_t modifiers) {
        return m_mac.hotKeyCenter().otherProgramTakes({keyCode, modifiers});
    }
    void otherProgramLetsGoOfKey(std::uint32_t keyCode, std::uint32_t modifiers) {
        m_mac.hotKeyCenter().otherProgramLetsGo({keyCode, modifiers});
    }

private:
    SimulatedAudioHardware& audio() { return m_mac.audioHardware(); }
    AudioObjectID device(const std::string& uid) { return audio().deviceWithUID(uid); }
    WindowNumber number(const std::string& title) const;

    mutable SimulatedMac m_mac;
    SimulatedNotificationSilencing& m_silencing = m_mac.becomeSwitchable();
    std::filesystem::path m_folder;
    std::map<std::string, ApplicationID> m_applications;
    std::uint32_t m_heldModifiers = 0;
};

static_assert(AudioRig<SimulatedRig> && SilencingRig<SimulatedRig> && KeyboardRig<SimulatedRig>);

} // namespace tavro
