#include "TestMachine.h"

#include "ProcessEvents.h"
#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"
#include "support/desktop/ClientApplication.h"
#include "support/desktop/Input.h"
#include "support/desktop/Tray.h"
#include "support/desktop/XServer.h"
#include "support/servers/AudioServer.h"
#include "support/servers/NotificationServer.h"

#include "platform/linux/process/LinuxMachine.h"
#include "platform/linux/process/StreamLog.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QImage>

#include <algorithm>
#include <chrono>
#include <map>

namespace tavro {
namespace {

const ::Point emptyPlace{1000, 1000}; // of the desktop, away from the panel

struct ModifierKey {
    std::uint32_t modifier;
    Input::Key key;
    std::uint16_t bit; // in the server's state
};

constexpr ModifierKey modifierKeys[] = {
    {cmdKey, Input::Key::super, XCB_MOD_MASK_4},
    {shiftKey, Input::Key::shift, XCB_MOD_MASK_SHIFT},
    {optionKey, Input::Key::alt, XCB_MOD_MASK_1},
    {controlKey, Input::Key::control, XCB_MOD_MASK_CONTROL},
};

/// In every state of Caps Lock and Num Lock.
std::vector<std::uint16_t> states(std::uint32_t modifiers) {
    std::uint16_t held = 0;
    for (const auto& entry : modifierKeys)
        if (modifiers & entry.modifier)
            held |= entry.bit;
    std::vector<std::uint16_t> all;
    for (const int locks : {0, +XCB_MOD_MASK_LOCK, +XCB_MOD_MASK_2, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2})
        all.push_back(static_cast<std::uint16_t>(held | locks));
    return all;
}

TerminationSignals& terminationSignals() {
    static TerminationSignals signals;
    return signals;
}

/// Nothing of the product is drawn: what windows show is no part of the contracts.
Views emptyViews() {
    return {[](const View&, QPainter&, const QRectF&) {}, [](const View&) { return nullptr; }};
}

/// The Linux machine in a private desktop. What the test waits for is the server's answer.
class LinuxTestMachine final : public TestMachine {
public:
    LinuxTestMachine() {
        m_input.moveTo(emptyPlace);
        m_machine = makeMachine();
    }
    // A failed test may leave a menu open, which would keep all clicks of the next.
    ~LinuxTestMachine() override {
        if (menuIsOpen())
            closeMenu();
        m_input.moveTo(emptyPlace);
        m_machine.reset();
        m_applications.clear();
        waitUntil([&] { return m_server.applicationWindows().empty() && m_tray.isEmpty(); });
    }

    Machine& machine() override { return *m_machine; }
    bool waitUntil(const std::function<bool()>& condition) override {
        QCoreApplication::processEvents();
        return ::waitUntil(condition, &processEvents);
    }
    MainQueue::Duration now() const override { return std::chrono::steady_clock::now().time_since_epoch(); }
    void relaunch() override {
        m_machine.reset();
        m_machine = makeMachine();
    }

    std::filesystem::path folder() const override { return m_folder.path(); }
    void writePicture(const std::filesystem::path& file, int width, int height,
                      std::uint32_t color) override {
        QImage image(width, height, QImage::Format_ARGB32);
        image.fill(color);
        EXPECT_TRUE(image.save(QString::fromStdString(file.string())));
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

    // The answer to a question marks that the panel has also seen what was sent to it before, and we what it
    // has sent.
    bool hasStatusItem() override {
        constexpr int answerMilliseconds = 1000;
        auto question =
            QDBusMessage::createMethodCall("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                                           "org.freedesktop.DBus.Properties", "Get");
        question << "org.kde.StatusNotifierWatcher"
                 << "IsStatusNotifierHostRegistered";
        if (m_tray.isEmpty())
            return false;
        const auto answer =
            QDBusConnection::sessionBus().call(question, QDBus::BlockWithGui, answerMilliseconds);
        QCoreApplication::processEvents();
        return answer.type() == QDBusMessage::ReplyMessage;
    }
    // Panels keep Alt-clicks to themselves; the middle button stands for them.
    void click(EventType type, unsigned modifierFlags) override {
        using Button = Input::Button;
        const auto button = type == EventType::rightMouseUp              ? Button::right
                            : modifierFlags & EventModifierFlags::option ? Button::middle
                                                                         : Button::left;
        m_input.click(m_tray.itemPlace(), button);
    }
    bool menuIsOpen() const override { return !m_server.menus().empty(); }
    // The entry is lit when the menu follows the pointer; a click that comes sooner may be lost.
    void chooseLast() override {
        constexpr int halfARow = 10;
        const auto menu = m_server.place(m_server.menus().at(0));
        const auto unlit = m_server.screenshot(menu);
        const ::Point entry{menu.x + menu.width / 2, menu.y + menu.height - halfARow};
        m_input.moveTo(entry);
        EXPECT_TRUE(waitUntil([&] { return m_server.screenshot(menu) != unlit; }));
        m_input.click(entry, Input::Button::left);
        m_input.moveTo(emptyPlace);
    }
    // One that has just opened may not have the keyboard yet.
    void closeMenu() override {
        EXPECT_TRUE(waitUntil([this] {
            if (!menuIsOpen())
                return true;
            m_input.type(Input::Key::escape);
            return false;
        }));
        m_input.moveTo(emptyPlace);
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

    bool showsANotification() override { return notifications().showsANotification(); }
    void userSwitchesDoNotDisturbOn() override { notifications().userSwitchesOn(); }

    void pressKey(std::uint32_t keyCode, std::uint32_t modifiers) override {
        for (const auto& entry : modifierKeys)
            if (modifiers & entry.modifier)
                m_input.press(entry.key);
        m_input.press(key(keyCode));
    }
    void releaseKey(std::uint32_t keyCode) override { m_input.release(key(keyCode)); }
    void releaseModifiers(std::uint32_t modifiers) override {
        for (const auto& entry : modifierKeys)
            if (modifiers & entry.modifier)
                m_input.release(entry.key);
    }
    bool otherProgramTakesKey(std::uint32_t keyCode, std::uint32_t modifiers) override {
        for (const auto state : states(modifiers))
            if (!m_server.grab(static_cast<std::uint8_t>(key(keyCode)), state)) {
                otherProgramLetsGoOfKey(keyCode, modifiers);
                return false;
            }
        return true;
    }
    void otherProgramLetsGoOfKey(std::uint32_t keyCode, std::uint32_t modifiers) override {
        for (const auto state : states(modifiers))
            m_server.ungrab(static_cast<std::uint8_t>(key(keyCode)), state);
    }

private:
    static Input::Key key(std::uint32_t keyCode) {
        static const std::map<std::uint32_t, Input::Key> keys{{35, Input::Key::p}, {46, Input::Key::m}};
        return keys.at(keyCode);
    }
    std::unique_ptr<LinuxMachine> makeMachine() {
        return std::make_unique<LinuxMachine>(XConnection::open(m_log), m_log, terminationSignals(),
                                              emptyViews(), folder() / "defaults.plist");
    }
    NotificationServer& notifications() {
        if (!m_notifications)
            m_notifications = std::make_unique<NotificationServer>(m_server, NotificationServer::xfce);
        return *m_notifications;
    }

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

} // namespace

std::unique_ptr<TestMachine> makeTestMachine() {
    return std::make_unique<LinuxTestMachine>();
}

} // namespace tavro
