#include "TestMachine.h"

#include "platform/simulated/process/SimulatedMac.h"

#include <algorithm>
#include <map>

namespace tavro {
namespace {

/// The simulated Mac, where everything takes effect at once or when the main queue has run.
class SimulatedTestMachine final : public TestMachine {
public:
    SimulatedTestMachine() { m_mac.workspace().startSelf(); }

    Machine& machine() override { return m_mac; }
    bool waitUntil(const std::function<bool()>& condition) override {
        const auto deadline = m_mac.mainQueue().now() + MainQueue::Duration(10);
        m_mac.mainQueue().runUntilIdle();
        bool isMet = condition();
        for (; !isMet && m_mac.mainQueue().now() < deadline; isMet = condition())
            m_mac.mainQueue().advance(MainQueue::Duration(0.01));
        return isMet;
    }
    void relaunch() override {
        m_mac.endProcess();
        m_mac.workspace().startSelf();
    }

    void openWindow(const std::string& application, const std::string& title, Rect frame) override {
        if (!m_applications.contains(application))
            m_applications.emplace(application, m_mac.workspace().launch(application));
        m_mac.workspace().openWindow(m_applications.at(application), title, frame);
    }
    void quit(const std::string& application) override {
        m_mac.workspace().quit(m_applications.at(application));
        m_applications.erase(application);
    }
    void clickWindow(const std::string& title) override { m_mac.workspace().clickWindow(number(title)); }
    void minimise(const std::string& title) override { m_mac.workspace().minimise(number(title)); }
    std::vector<std::string> shownTitles() const override {
        std::vector<std::string> titles;
        for (const auto& window : m_mac.windowServer().windows())
            if (m_applications.contains(window.ownerName) && m_mac.windowServer().isVisible(window))
                titles.push_back(window.name);
        return titles;
    }
    std::optional<Rect> shownFrame(WindowNumber number) const override {
        const auto* window = m_mac.windowServer().find(number);
        return window && m_mac.windowServer().isVisible(*window) ? std::optional(window->frame)
                                                                 : std::nullopt;
    }

    std::string addInputDevice(const std::string& name) override {
        return audio().device(audio().plugIn(SimulatedAudioHardware::microphone(name))).uid;
    }
    std::string addOutputDevice(const std::string& name) override {
        return audio().device(audio().plugIn(SimulatedAudioHardware::speaker(name))).uid;
    }
    void removeDevice(const std::string& uid) override { audio().unplug(device(uid)); }
    void setDefaultInput(const std::string& uid) override { audio().setDefaultInput(device(uid)); }
    void setDefaultOutput(const std::string& uid) override { audio().setDefaultOutput(device(uid)); }
    void otherProgramSetsMute(const std::string& uid, bool mute) override {
        audio().otherProgramSetsMute(device(uid), mute);
    }
    bool isMutedOnServer(const std::string& uid) override { return audio().isMuted(device(uid)).value(); }

    void pressKey(std::uint32_t keyCode, std::uint32_t modifiers) override {
        m_heldModifiers |= modifiers;
        m_mac.hotKeyCenter().press({keyCode, m_heldModifiers});
    }
    void releaseKey(std::uint32_t keyCode) override { m_mac.hotKeyCenter().release(keyCode); }
    void releaseModifiers(std::uint32_t modifiers) override { m_heldModifiers &= ~modifiers; }
    bool otherProgramTakesKey(std::uint32_t keyCode, std::uint32_t modifiers) override {
        return m_mac.hotKeyCenter().otherProgramTakes({keyCode, modifiers});
    }
    void otherProgramLetsGoOfKey(std::uint32_t keyCode, std::uint32_t modifiers) override {
        m_mac.hotKeyCenter().otherProgramLetsGo({keyCode, modifiers});
    }

private:
    SimulatedAudioHardware& audio() { return m_mac.audioHardware(); }
    AudioObjectID device(const std::string& uid) { return audio().deviceWithUID(uid); }
    WindowNumber number(const std::string& title) const {
        return std::ranges::find(m_mac.windowServer().windows(), title, &ServerWindow::name)->number;
    }

    mutable SimulatedMac m_mac;
    std::map<std::string, ApplicationID> m_applications;
    std::uint32_t m_heldModifiers = 0;
};

} // namespace

std::unique_ptr<TestMachine> makeTestMachine() {
    return std::make_unique<SimulatedTestMachine>();
}

} // namespace tavro
