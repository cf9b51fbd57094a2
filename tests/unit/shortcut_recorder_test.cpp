#include "support/Launch.h"

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
    void setText(const std::string& text) override { m_text = text; }
    void setPlaceholder(const std::string& text) override { placeholder = text; }
    void clickClearButton() override {
        if (m_text.empty())
            return;
        m_text.clear();
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
    std::string placeholder;
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
        setShortcut(m, name);
        make(name);
    }

    void make(const Name& of) {
        recorder.emplace(field, of, [this](const auto& s) { told.push_back(s ? s->description() : "none"); });
        field.recorder = &*recorder;
    }
    /// Whether the key goes on to the field.
    bool type(std::uint16_t keyCode, unsigned modifiers, SpecialKey specialKey = SpecialKey::none) {
        return mac.eventMonitors().send(Event{EventType::keyDown, modifiers, keyCode, specialKey});
    }
    bool release(EventType button, double x, double y) {
        return mac.eventMonitors().send(Event{button, 0, std::nullopt, SpecialKey::none, {x, y}});
    }
    void expectIdle(const std::string& text) {
        EXPECT_EQ(field.text(), text);
        EXPECT_EQ(field.placeholder, "Record Shortcut");
        EXPECT_FALSE(field.hasFocus);
        EXPECT_FALSE(isPaused());
        EXPECT_EQ(mac.eventMonitors().count(), 0u);
    }
    void expectRecording() {
        EXPECT_EQ(field.placeholder, "Press Shortcut");
        EXPECT_TRUE(field.hasFocus);
        EXPECT_TRUE(isPaused());
        EXPECT_EQ(mac.eventMonitors().count(), 1u);
    }

    static constexpr auto f1 = SpecialKey::f1, f35 = SpecialKey::f35;

    Process process{mac};
    const Name name{"test"};
    const Shortcut m{46, 768};
    Field field;
    std::optional<ShortcutRecorder> recorder;
    Lines told;
};

TEST_F(ShortcutRecorderTest, RecordsValidShortcuts) {
    const std::tuple<std::uint16_t, unsigned, SpecialKey, const char*> cases[] = {
        {35, command | shift, SpecialKey::none, "⇧⌘P"},
        {0, shift | capsLock, SpecialKey::none, "⇧A"},
        {96, function, f1, "F5"},
        {90, 0, f35, "F20"},
        {53, command, SpecialKey::none, "⌘⎋"},
        {48, control, SpecialKey::tab, "⌃⇥"},
        {51, option, SpecialKey::delete_, "⌥⌫"},
        {123, shift | numericPad, SpecialKey::none, "⇧←"},
    };
    expectIdle("⇧⌘M");
    for (const auto& [keyCode, modifiers, specialKey, text] : cases) {
        SCOPED_TRACE(text);
        field.focus();
        expectRecording();
        EXPECT_FALSE(type(keyCode, modifiers, specialKey));
        expectIdle(text);
        EXPECT_EQ(getShortcut(name)->description(), text);
        EXPECT_EQ(told.back(), text);
        EXPECT_EQ(mac.hotKeyCenter().registered().size(), 1u);
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
    expectRecording();
    EXPECT_EQ(told, Lines{});
    EXPECT_EQ(getShortcut(name), m);
}

TEST_F(ShortcutRecorderTest, EscapeTabAndOutsideClicksChangeNothing) {
    const std::pair<const char*, std::function<bool()>> ends[] = {
        {"Escape", [this] { return type(53, 0); }},
        {"Tab", [this] { return type(48, 0, SpecialKey::tab); }},
        {"left outside", [this] { return release(EventType::leftMouseUp, 96, 110); }},
        {"right outside", [this] { return release(EventType::rightMouseUp, 110, 126); }},
    };
    for (const auto& [what, end] : ends) {
        SCOPED_TRACE(what);
        field.focus();
        EXPECT_FALSE(release(EventType::leftMouseUp, 98, 124));
        expectRecording();
        EXPECT_EQ(end(), std::string(what) == "Tab");
        expectIdle("⇧⌘M");
    }
    EXPECT_EQ(told, Lines{});
    EXPECT_EQ(getShortcut(name), m);
}

TEST_F(ShortcutRecorderTest, DeleteKeysClearAndKeepRecording) {
    const std::pair<std::uint16_t, SpecialKey> keys[] = {
        {51, SpecialKey::delete_}, {117, SpecialKey::deleteForward}, {51, SpecialKey::backspace}};
    for (const auto& [keyCode, specialKey] : keys) {
        setShortcut(m, name);
        told.clear();
        field.focus();
        for (int time = 0; time < 2; ++time) // the second time there is nothing to clear
            EXPECT_FALSE(type(keyCode, 0, specialKey));
        expectRecording();
        EXPECT_EQ(mac.userDefaults().object(name.key()), PropertyList(false));
        EXPECT_EQ(told, Lines{"none"});
    }
    field.blur();
    setShortcut(m, name);
    field.clickClearButton(); // with the mouse
    expectRecording();
    EXPECT_EQ(field.beeps, 0);
}

TEST_F(ShortcutRecorderTest, RefusesShortcutsOfTheMenuAndTheSystem) {
    const auto menu = std::make_shared<Menu>("Main");
    menu->items = {{"Close", nullptr, "w"}};
    mac.application().setMainMenu(menu);
    mac.hotKeyCenter().symbolicHotKeys =
        PropertyList::Array{PropertyList::Dictionary{{"kHISymbolicHotKeyEnabled", true},
                                                     {"kHISymbolicHotKeyCode", 35},
                                                     {"kHISymbolicHotKeyModifiers", 256}}};
    field.focus();
    EXPECT_FALSE(type(13, command));
    expectRecording();
    EXPECT_FALSE(type(35, command));
    expectRecording();
    EXPECT_EQ(
        field.warnings,
        (Lines{"This keyboard shortcut cannot be used as it's already used by the “Close” menu item.|",
               "This keyboard shortcut cannot be used as it's already a system-wide keyboard shortcut.|Most "
               "system-wide keyboard shortcuts can be changed in “System Preferences › Keyboard › "
               "Shortcuts“."}));
    EXPECT_EQ(told, Lines{});
    EXPECT_EQ(getShortcut(name), m);
    field.whileWarning = [this] { recorder.reset(); };
    EXPECT_FALSE(type(35, command)); // its window was closed meanwhile
    EXPECT_FALSE(isPaused());
}

TEST_F(ShortcutRecorderTest, FollowsChangesOfItsOwnName) {
    const Name other("other");
    setShortcut(Shortcut(35, 256), other);
    expectIdle("⇧⌘M");
    setShortcut(Shortcut(0, 256), name);
    expectIdle("⌘A");
    field.focus();
    recorder->setShortcutName(Name("test"));
    mac.mainQueue().runUntilIdle();
    expectRecording();
    recorder->setShortcutName(other);
    expectRecording();
    EXPECT_EQ(field.text(), "⌘P");
    mac.mainQueue().runUntilIdle();
    expectIdle("⌘P");
    reset({other});
    expectIdle("");
    field.focus();
    recorder.reset(); // with its window
    EXPECT_FALSE(isPaused());
    EXPECT_EQ(mac.eventMonitors().count(), 0u);
    setShortcut(m, other);
}

} // namespace
} // namespace tavro
