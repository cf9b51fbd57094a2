#include "support/machines/UiTest.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "LaunchAtLogin/LaunchAtLogin.h"
#include "ui/popover/CustomToogleButton.h"
#include "ui/preferences/Recorder.h"
#include "ui/preferences/RecorderCocoa.h"
#include "ui/preferences/ToolbarWidget.h"

#include <QPointer>
#include <QTest>
#include <QWindow>

namespace tavro {
namespace {

/// With the keys of a real keyboard, and no mouse.
class KeyboardTest : public UiTest {
protected:
    static void activate(QWidget& window) {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(comesTo("the focus", [&] { return window.windowHandle()->isActive(); }));
    }
    static void type(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window.windowHandle(), key, modifiers);
        settle();
    }
    static std::string focused() {
        const auto* button = qobject_cast<const QAbstractButton*>(QApplication::focusWidget());
        return button ? button->text().toStdString() : "no button";
    }
    /// What the key comes to, one after the other, until it is at the first one again.
    static Lines round(QWidget& window, Qt::Key key) {
        Lines found;
        for (type(window, key); found.size() < 20 && (found.empty() || focused() != found.front());
             type(window, key))
            found.push_back(focused());
        return found;
    }
    /// Half a point inside of the middle of the left edge.
    static bool hasRing(QWidget& widget) {
        const auto color = widget.palette().color(QPalette::Highlight);
        return Drawing(widget).at(0.5, widget.height() / 2.0) == color;
    }
    /// Whether the key goes on to the window, after the recorder has seen it.
    bool press(std::uint16_t keyCode, SpecialKey key = SpecialKey::none) {
        return mac.eventMonitors().send(Event{EventType::keyDown, 0, keyCode, key});
    }
    static constexpr std::uint16_t escape = 53;
};

TEST_F(KeyboardTest, TabGoesThroughThePopoverAndSpaceAndReturnPressOnceEach) {
    const auto widget = popover();
    activate(*widget);
    EXPECT_EQ(focused(), "no button");
    Lines expected{ContentView::headerTitle};
    for (const auto& option : UserSettings::shared().options())
        expected.push_back(option.name);
    EXPECT_EQ(round(*widget, Qt::Key_Tab), expected);
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        const bool before = UserSettings::shared().tavroIsOn();
        type(*widget, key);
        EXPECT_NE(UserSettings::shared().tavroIsOn(), before) << key;
    }
}

TEST_F(KeyboardTest, TheRingShowsForTheKeyboardOnly) {
    const auto widget = popover();
    activate(*widget);
    auto& header = find<CustomToogleButton>(*widget);
    QTest::mouseClick(&header, Qt::LeftButton);
    EXPECT_FALSE(hasRing(header));
    type(*widget, Qt::Key_Tab);
    EXPECT_TRUE(hasRing(header));
    QWidget other;
    activate(other);
    activate(*widget);
    EXPECT_TRUE(hasRing(header)) << "back from another window";
    type(*widget, Qt::Key_Tab);
    EXPECT_FALSE(hasRing(header));
    widget->hide();
    activate(*widget);
    EXPECT_EQ(focused(), "no button") << "opened again";
}

TEST_F(KeyboardTest, TabGoesThroughThePreferencesPastTheFields) {
    chooseWallpaper();
    auto& window = preferences();
    activate(window);
    EXPECT_EQ(focused(), "General");
    Lines expected{"General", "Launch at login", "Toggle TavroPRO", "Mute Mic:", "Select...", "Remove"};
    type(window, Qt::Key_Backtab);
    EXPECT_EQ(round(window, Qt::Key_Tab), expected);
    EXPECT_FALSE(KeyboardShortcuts::isPaused());
    std::ranges::reverse(expected);
    EXPECT_EQ(round(window, Qt::Key_Backtab), expected);
    type(window, Qt::Key_Return);
    EXPECT_FALSE(mac.userDefaults().boolForKey(Constants::wallpaperFileKey));
    EXPECT_EQ(focused(), "Select...") << "the button is gone";
    type(window, Qt::Key_Return);
    EXPECT_TRUE(mac.openPanels().shown());
}

TEST_F(KeyboardTest, RecordingBeginsWithAKeyAndLeavesNoFocus) {
    auto& window = preferences();
    activate(window);
    auto& recorder = find<Recorder>(window);
    auto& field = find<RecorderCocoa>(recorder);
    for (const auto begin : {Qt::Key_Space, Qt::Key_Return}) {
        recorder.setFocus(Qt::TabFocusReason);
        EXPECT_TRUE(hasRing(recorder));
        type(window, begin);
        EXPECT_TRUE(field.hasFocus());
        EXPECT_TRUE(KeyboardShortcuts::isPaused());
        EXPECT_FALSE(hasRing(recorder));
        EXPECT_FALSE(press(escape)) << "not for others";
        EXPECT_FALSE(KeyboardShortcuts::isPaused());
        EXPECT_EQ(window.focusWidget(), nullptr);
        type(window, Qt::Key_Backtab);
        EXPECT_EQ(focused(), "Toggle TavroPRO") << "near where it was";
    }
    QTest::mouseClick(&field, Qt::LeftButton);
    field.setFocus(Qt::MouseFocusReason); // which a real pointer brings along
    EXPECT_TRUE(press(48, SpecialKey::tab)) << "goes on to the window";
    EXPECT_FALSE(hasRing(recorder));
    type(window, Qt::Key_Tab);
    EXPECT_EQ(focused(), "Mute Mic:") << "from the field to what follows it";
}

// So that the keyboard is not kept from the session by a field that nobody types into.
TEST_F(KeyboardTest, RecordingEndsTenSecondsAfterTheLastKey) {
    auto& window = preferences();
    activate(window);
    auto& field = find<RecorderCocoa>(window);
    field.setFocus();
    const auto passes = [&](double seconds) {
        mac.mainQueue().advance(SimulatedMainQueue::Duration(seconds));
        EXPECT_EQ(KeyboardShortcuts::isPaused(), field.hasFocus());
        return field.hasFocus();
    };
    EXPECT_TRUE(passes(9));
    type(window, Qt::Key_Shift);
    EXPECT_TRUE(passes(9.9));
    field.clearFocus();
    field.setFocus(); // recording anew
    EXPECT_TRUE(passes(9.9));
    EXPECT_FALSE(passes(0.1));
    EXPECT_EQ(QApplication::focusWidget(), nullptr);
}

TEST_F(KeyboardTest, TheTabsFollowTheSelectionAndSetIt) {
    const auto state = std::make_shared<PreferenceState>();
    ToolbarWidget tabs({{"General", "More"}, state});
    auto& more = find<QAbstractButton>(tabs, 1);
    state->pageIndex.set(1);
    EXPECT_TRUE(comesTo("the other tab", [&] { return more.isChecked(); }));
    find<QAbstractButton>(tabs).click();
    EXPECT_EQ(state->pageIndex.get(), 0);
    EXPECT_FALSE(more.isChecked());
}

TEST_F(KeyboardTest, ControlWClosesThePreferences) {
    const QPointer<QWidget> window = &preferences();
    activate(*window);
    type(*window, Qt::Key_Escape);
    EXPECT_TRUE(window && window->isVisible());
    type(*window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window && window->isVisible());
}

} // namespace
} // namespace tavro
