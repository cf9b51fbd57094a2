#include "support/machines/Launch.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/RecorderField.h"
#include "KeyboardShortcuts/ShortcutRecorder.h"

namespace tavro {
namespace {

using namespace KeyboardShortcuts;
using namespace EventModifierFlags;

/// A field on no screen, at 100,100 and 130 by 22 points in size.
class Field final : public RecorderField {
public:
    std::string text() const override { return m_text; }
    void setText(const std::string& text, const std::string& shown) override {
        m_text = text;
        names = shown;
    }
    void setPlaceholder(const std::string& text) override { placeholder = text; }
    void clickClearButton() override {
        if (!std::exchange(m_text, "").empty())
            recorder->controlTextDidChange();
    }
    void focus() override {
        if (!std::exchange(hasFocus, true))
            recorder->becomeFirstResponder();
    }
    void blur() override {
        if (std::exchange(hasFocus, false))
            recorder->controlTextDidEndEditing();
    }
    bool contains(Point place, double margin) const override {
        return place.x >= 100 - margin && place.x <= 230 + margin && place.y >= 100 - margin &&
               place.y <= 122 + margin;
    }
    void beep() override { ++beeps; }
    void showWarning(const std::string& message, const std::string& information) override {
        EXPECT_FALSE(hasFocus);
        warnings.push_back(message + "|" + information);
        if (whileWarning)
            whileWarning();
    }

    ShortcutRecorder* recorder = nullptr;
    std::string placeholder, names;
    bool hasFocus = false;
    int beeps = 0;
    Lines warnings;
    std::function<void()> whileWarning;

private:
    std::string m_text;
};

class ShortcutRecorderTest : public SimulatedMacTest {
protected:
    ShortcutRecorderTest() {
        mac.hotKeyCenter().symbolicHotKeys =
            PropertyList::Array{PropertyList::Dictionary{{"kHISymbolicHotKeyEnabled", true},
                                                         {"kHISymbolicHotKeyCode", 13},
                                                         {"kHISymbolicHotKeyModifiers", 256}}};
        setShortcut(m, name);
        makeRecorder();
    }

    void makeRecorder() {
        recorder.emplace(field, name, [this](const auto& shortcut) {
            changes.push_back(shortcut ? shortcut->description() : "none");
        });
        field.recorder = &*recorder;
    }

    /// Whether the key goes on to the field.
    bool type(std::uint16_t keyCode, unsigned modifiers, SpecialKey specialKey = SpecialKey::none) {
        return mac.eventMonitors().send(Event{EventType::keyDown, modifiers, keyCode, specialKey});
    }
    bool release(EventType button, double x, double y) {
        return mac.eventMonitors().send(Event{button, 0, std::nullopt, SpecialKey::none, {x, y}});
    }
    /// Whether it takes the next key press, on which all must agree.
    bool isRecording() {
        EXPECT_EQ(field.placeholder, field.hasFocus ? "Press Shortcut" : "Record Shortcut");
        EXPECT_EQ(isPaused(), field.hasFocus);
        EXPECT_EQ(mac.eventMonitors().count(), field.hasFocus ? 1u : 0u);
        return field.hasFocus;
    }
    void expectNothingChanged() {
        EXPECT_EQ(changes, Lines{});
        EXPECT_EQ(field.text(), "⇧⌘M");
        EXPECT_EQ(getShortcut(name), m);
    }

    Process process{mac};
    const Name name{"test"};
    const Shortcut m{46, 768};
    Field field;
    std::optional<ShortcutRecorder> recorder;
    Lines changes;
};

TEST_F(ShortcutRecorderTest, RecordsValidShortcuts) {
    const std::tuple<std::uint16_t, unsigned, SpecialKey, const char*, const char*> cases[] = {
        {35, command | shift, SpecialKey::none, "⇧⌘P", "Shift+Super+P"},
        {0, shift | capsLock, SpecialKey::none, "⇧A", "Shift+A"},
        {96, function, SpecialKey::f1, "F5", "F5"},
        {90, 0, SpecialKey::f35, "F20", "F20"},
        {53, command, SpecialKey::none, "⌘⎋", "Super+Escape"},
        {48, control, SpecialKey::tab, "⌃⇥", "Ctrl+Tab"},
        {51, option, SpecialKey::delete_, "⌥⌫", "Alt+Backspace"},
        {123, shift | numericPad, SpecialKey::none, "⇧←", "Shift+Left"},
    };
    EXPECT_FALSE(isRecording());
    EXPECT_EQ(field.text(), "⇧⌘M");
    for (const auto& [keyCode, modifiers, specialKey, text, names] : cases) {
        SCOPED_TRACE(text);
        field.focus();
        EXPECT_TRUE(isRecording());
        EXPECT_FALSE(type(keyCode, modifiers, specialKey));
        EXPECT_FALSE(isRecording());
        EXPECT_EQ(field.text(), text);
        EXPECT_EQ(field.names, names);
        EXPECT_EQ(getShortcut(name)->description(), text);
        EXPECT_EQ(changes.back(), text);
    }
    EXPECT_EQ(field.beeps, 0);
}

TEST_F(ShortcutRecorderTest, BeepsAtInvalidKeys) {
    field.focus();
    constexpr auto beyondF35 = SpecialKey(static_cast<int>(SpecialKey::f35) + 1);
    for (const auto key : {SpecialKey::none, beyondF35})
        for (const auto modifiers : {0u, unsigned(capsLock), numericPad | function})
            EXPECT_FALSE(type(0, modifiers, key));
    EXPECT_FALSE(mac.eventMonitors().send(Event{EventType::keyDown, command}));
    EXPECT_EQ(field.beeps, 7);
    EXPECT_TRUE(isRecording());
    expectNothingChanged();
}

TEST_F(ShortcutRecorderTest, EscapeTabAndOutsideClicksChangeNothing) {
    const std::function<bool()> ends[] = {
        [this] { return type(53, 0); }, [this] { return release(EventType::leftMouseUp, 96, 110); },
        [this] { return release(EventType::rightMouseUp, 110, 126); },
        [this] { return !type(48, 0, SpecialKey::tab); }, // which goes on
    };
    for (const auto& end : ends) {
        field.focus();
        EXPECT_FALSE(release(EventType::leftMouseUp, 98, 124));
        EXPECT_TRUE(isRecording());
        EXPECT_FALSE(end());
        EXPECT_FALSE(isRecording());
    }
    expectNothingChanged();
}

TEST_F(ShortcutRecorderTest, DeleteKeysClearAndKeepRecording) {
    const std::pair<std::uint16_t, SpecialKey> keys[] = {
        {51, SpecialKey::delete_}, {117, SpecialKey::deleteForward}, {51, SpecialKey::backspace}};
    field.focus();
    for (const auto& [keyCode, specialKey] : keys) {
        setShortcut(m, name);
        EXPECT_FALSE(type(keyCode, 0, specialKey));
        EXPECT_TRUE(isRecording());
        EXPECT_EQ(getShortcut(name), std::nullopt);
    }
    field.blur();
    setShortcut(m, name);
    field.clickClearButton(); // with the mouse
    EXPECT_TRUE(isRecording());
    EXPECT_EQ(changes, Lines(4, "none"));
    EXPECT_EQ(field.beeps, 0);
    field.blur();
    setShortcut(m, name);
    recorder.emplace(field, name, [this](const auto&) { setShortcut(m, name); });
    field.recorder = &*recorder;
    field.clickClearButton();
    EXPECT_FALSE(isRecording());
    EXPECT_EQ(field.text(), "⇧⌘M");
}

TEST_F(ShortcutRecorderTest, RefusesShortcutsOfTheMenuAndTheSystem) {
    const auto menu = std::make_shared<Menu>("Main");
    menu->items = {{"Print", nullptr, "p"}};
    mac.application().setMainMenu(menu);
    field.focus();
    for (const std::uint16_t keyCode : {std::uint16_t{35}, std::uint16_t{13}}) {
        EXPECT_FALSE(type(keyCode, command));
        EXPECT_TRUE(isRecording());
    }
    EXPECT_EQ(
        field.warnings,
        (Lines{"This keyboard shortcut cannot be used as it's already used by the “Print” menu item.|",
               "This keyboard shortcut cannot be used as it's already a system-wide keyboard shortcut.|Most "
               "system-wide keyboard shortcuts can be changed in “System Preferences › Keyboard › "
               "Shortcuts“."}));
    expectNothingChanged();
    mac.hotKeyCenter().symbolicHotKeys = PropertyList::Array();
    type(13, command);
    EXPECT_EQ(field.warnings.size(), 3u) << "as they were when this recording began";
    type(13, command);
    EXPECT_EQ(field.text(), "⌘W");
}

TEST_F(ShortcutRecorderTest, FollowsChangesOfItsOwnName) {
    const Name other("other");
    setShortcut(Shortcut(35, 256), other);
    EXPECT_EQ(field.text(), "⇧⌘M");
    setShortcut(Shortcut(0, 256), name);
    EXPECT_EQ(field.text(), "⌘A");
    field.focus();
    recorder->setShortcutName(Name("test"));
    mac.mainQueue().runUntilIdle();
    EXPECT_TRUE(isRecording());
    recorder->setShortcutName(other);
    EXPECT_TRUE(isRecording());
    mac.mainQueue().runUntilIdle();
    EXPECT_FALSE(isRecording());
    EXPECT_EQ(field.text(), "⌘P");
    reset({other});
    EXPECT_EQ(field.text(), "");
}

TEST_F(ShortcutRecorderTest, MayBeDestroyedWhileRecording) {
    const std::function<void()> ways[] = {
        [this] { recorder.reset(); },
        [this] {
            recorder->setShortcutName(Name("other"));
            recorder.reset();
            mac.mainQueue().runUntilIdle(); // when it would have ended recording
            EXPECT_TRUE(field.hasFocus);
        },
        [this] {
            field.whileWarning = [this] { recorder.reset(); };
            type(13, command);
        },
    };
    for (const auto& go : ways) {
        makeRecorder();
        field.focus();
        go();
        EXPECT_FALSE(isPaused());
        EXPECT_EQ(mac.eventMonitors().count(), 0u);
        field.hasFocus = false;
    }
}

} // namespace
} // namespace tavro
