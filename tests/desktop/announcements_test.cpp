#include "support/machines/UiTest.h"

#include "LaunchAtLogin/LaunchAtLogin.h"
#include "ui/preferences/Recorder.h"

#include <QAccessible>
#include <QProcess>
#include <QWindow>

#include <set>

namespace tavro {
namespace {

/// Events that go out to assistive technology, which somebody must be there to hear: the views, on the
/// simulated Mac, with the bridge of the real desktop.
class Announcements : public UiTest {
protected:
    using Announced = std::pair<QAccessible::Event, std::string>;

    static void SetUpTestSuite() {
        s_bus = std::make_unique<QProcess>();
        s_bus->start("/usr/libexec/at-spi-bus-launcher", {"--launch-immediately", "--a11y=1"});
    }
    static void TearDownTestSuite() {
        s_bus->terminate();
        s_bus->waitForFinished();
        s_bus.reset();
    }
    void SetUp() override {
        QAccessible::installUpdateHandler([](QAccessibleEvent* event) {
            if (const auto* accessible = event->accessibleInterface())
                s_announced.emplace(event->type(), accessible->text(QAccessible::Name).toStdString());
        });
    }
    void TearDown() override { QAccessible::installUpdateHandler(nullptr); }

    /// A window that assistive technology has seen.
    static void show(QWidget& window) {
        window.show();
        for (auto* widget : window.findChildren<QWidget*>())
            QAccessible::queryAccessibleInterface(widget);
        ASSERT_TRUE(comesTo("assistive technology", [] { return QAccessible::isActive(); }));
        ASSERT_TRUE(comesTo("the window", [&] { return window.windowHandle()->isExposed(); }));
    }
    static void expect(const Announced& event, const std::function<void()>& cause) {
        settle();
        s_announced.clear();
        cause();
        EXPECT_TRUE(comesTo(event.second, [&] { return s_announced.contains(event); }));
    }

private:
    static inline std::unique_ptr<QProcess> s_bus;
    static inline std::set<Announced> s_announced;
};

TEST_F(Announcements, StatesOfThePopover) {
    const auto widget = popover();
    show(*widget);
    auto& settings = UserSettings::shared();
    for (const bool isOn : {true, false}) {
        SCOPED_TRACE(isOn);
        expect({QAccessible::StateChanged, ContentView::headerTitle}, [&] { settings.setTavroIsOn(isOn); });
        for (std::size_t i = 0; i < settings.options().size(); ++i)
            expect({QAccessible::StateChanged, settings.options()[i].name},
                   [&] { settings.setOptionIsOn(i, !settings.options()[i].isOn); });
    }
    expect({QAccessible::ObjectShow, "🎉 New version is available. Click to update"},
           [&] { publishNewVersion(); });
}

TEST_F(Announcements, StatesOfThePreferences) {
    auto& window = preferences();
    show(window);
    expect({QAccessible::StateChanged, "Launch at login"}, [&] { LaunchAtLogin::setIsEnabled(false); });
    window.activateWindow();
    ASSERT_TRUE(comesTo("the focus", [&] { return window.windowHandle()->isActive(); }));
    auto& recorder = find<Recorder>(window);
    expect({QAccessible::Focus, "Toggle TavroPRO"}, [&] { recorder.setFocus(Qt::TabFocusReason); });
    expect({QAccessible::DescriptionChanged, "Toggle TavroPRO"}, [&] { recorder.click(); });
    expect({QAccessible::TextInserted, "Toggle TavroPRO F5"}, [&] {
        mac.eventMonitors().send(Event{EventType::keyDown, 0, std::uint16_t{96}, SpecialKey(0xF708)});
    });
}

} // namespace
} // namespace tavro
