#include "TestMachine.h"

#include "ProcessEvents.h"
#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"
#include "support/desktop/ClientApplication.h"
#include "support/desktop/Input.h"
#include "support/desktop/XServer.h"
#include "support/servers/AudioServer.h"

#include "platform/linux/process/LinuxMachine.h"
#include "platform/linux/process/StreamLog.h"

#include <QApplication>

#include <algorithm>
#include <chrono>
#include <map>

namespace tavro {
namespace {

constexpr std::pair<std::uint32_t, Input::Key> modifierKeys[] = {
    {cmdKey, Input::Key::super},
    {shiftKey, Input::Key::shift},
    {optionKey, Input::Key::alt},
    {controlKey, Input::Key::control},
};

TerminationSignals& terminationSignals() {
    static TerminationSignals signals;
    return signals;
}

/// Nothing of the product is drawn: what windows show is no part of the contracts.
Views emptyViews() {
    return {[](const View&) { return ViewContent{}; }, [](const View&) { return nullptr; }};
}

/// The Linux machine in a private desktop. What the test waits for is the server's answer.
class LinuxTestMachine final : public TestMachine {
public:
    ~LinuxTestMachine() override {
        m_machine.reset();
        m_applications.clear();
        waitUntil([&] { return m_server.applicationWindows().empty(); });
    }

    Machine& machine() override { return *m_machine; }
    bool waitUntil(const std::function<bool()>& condition) override {
        QCoreApplication::processEvents();
        return ::waitUntil(condition, &processEvents);
    }
    void relaunch() override {
        m_machine.reset();
        m_machine = makeMachine();
    }

    void openWindow(const std::string& application, const std::string& title, Rect frame) override {
        auto& client = m_applications[application];
        if (!client)
            client = std::make_unique<ClientApplication>(m_server, application);
        const auto place = QtScreens::coordinates().toToolkit(frame).toRect();
        const auto window = client->addWindow({place.x(), place.y(), place.width(), place.height()});
        xcb_change_property(m_server.raw(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING,
                            8, static_cast<std::uint32_t>(title.size()), title.data());
        xcb_flush(m_server.raw());
        std::erase_if(m_windows,
                      [window](const auto& known) { return known.second == window; }); // used again
        m_windows[title] = window;
    }
    // Until the window manager has forgotten its windows: the server gives their numbers to the next ones.
    void quit(const std::string& application) override {
        const auto isOurs = [&](auto window) {
            return m_server.text(window, "WM_CLASS").starts_with(application + '\0');
        };
        auto windows = m_server.applicationWindows();
        std::erase_if(windows, [&](auto window) { return !isOurs(window); });
        m_applications.erase(application);
        EXPECT_TRUE(m_server.eventually("the end of the windows of " + application, [&] {
            const auto clients = m_server.clients();
            return std::ranges::find_first_of(clients, windows) == clients.end() &&
                   std::ranges::find(windows, m_server.active()) == windows.end();
        }));
    }
    void clickWindow(const std::string& title) override { m_server.activate(m_windows.at(title)); }
    void minimise(const std::string& title) override { m_server.minimise(m_windows.at(title)); }
    std::vector<std::string> shownTitles() const override {
        std::vector<std::string> titles;
        for (const auto window : m_server.clients()) {
            const auto known = std::ranges::find(m_windows, window, &decltype(m_windows)::value_type::second);
            if (known != m_windows.end() && m_server.isViewable(window))
                titles.push_back(known->first);
        }
        return titles;
    }
    std::optional<Rect> shownFrame(WindowNumber number) const override {
        const auto window = static_cast<xcb_window_t>(number);
        if (!m_server.isViewable(window))
            return std::nullopt;
        const auto place = m_server.place(window);
        return QtScreens::coordinates().fromToolkit(QRect(place.x, place.y, place.width, place.height));
    }

    // The server knows a device by a name that no other has had.
    std::string addInputDevice(const std::string& name) override {
        const auto uid = "mic_of_test_" + std::to_string(++m_addedDevices);
        m_audioServer.plugInMicrophone(uid, name);
        return uid;
    }
    std::string addOutputDevice(const std::string& name) override {
        const auto uid = "speaker_of_test_" + std::to_string(++m_addedDevices);
        m_audioServer.plugInSpeaker(uid, name);
        return uid;
    }
    void removeDevice(const std::string& uid) override { m_audioServer.unplug(uid); }
    void setDefaultInput(const std::string& uid) override { m_audioServer.makeDefault(uid); }
    void setDefaultOutput(const std::string& uid) override { m_audioServer.makeDefault(uid); }
    void otherProgramSetsMute(const std::string& uid, bool mute) override { m_audioServer.mute(uid, mute); }
    bool isMutedOnServer(const std::string& uid) override { return m_audioServer.isMuted(uid); }

    void pressKey(std::uint32_t keyCode, std::uint32_t modifiers) override {
        for (const auto& [modifier, key] : modifierKeys)
            if (modifiers & modifier)
                m_input.press(key);
        m_input.press(key(keyCode));
    }
    void releaseKey(std::uint32_t keyCode) override { m_input.release(key(keyCode)); }
    void releaseModifiers(std::uint32_t modifiers) override {
        for (const auto& [modifier, key] : modifierKeys)
            if (modifiers & modifier)
                m_input.release(key);
    }
    bool otherProgramTakesKey(std::uint32_t keyCode, std::uint32_t) override {
        return m_server.grab(static_cast<std::uint8_t>(key(keyCode)), XCB_MOD_MASK_ANY);
    }
    void otherProgramLetsGoOfKey(std::uint32_t keyCode, std::uint32_t) override {
        m_server.ungrab(static_cast<std::uint8_t>(key(keyCode)), XCB_MOD_MASK_ANY);
    }

private:
    static Input::Key key(std::uint32_t keyCode) {
        static const std::map<std::uint32_t, Input::Key> keys{{35, Input::Key::p}, {46, Input::Key::m}};
        return keys.at(keyCode);
    }
    std::unique_ptr<LinuxMachine> makeMachine() {
        return std::make_unique<LinuxMachine>(XConnection::open(m_log), m_log, terminationSignals(),
                                              emptyViews(), m_folder.path() / "defaults.plist");
    }
    TemporaryFolder m_folder;
    AudioServer m_audioServer;
    int m_addedDevices = 0;
    XServer m_server;
    Input m_input{m_server};
    StreamLog m_log;
    std::unique_ptr<LinuxMachine> m_machine = makeMachine();
    std::map<std::string, std::unique_ptr<ClientApplication>> m_applications;
    std::map<std::string, xcb_window_t> m_windows; // by title
};

} // namespace

std::unique_ptr<TestMachine> makeTestMachine() {
    return std::make_unique<LinuxTestMachine>();
}

} // namespace tavro
