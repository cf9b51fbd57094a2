#include "support/machines/Launch.h"

#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"
#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/ShortcutRecord.h"
#include "platform/input/Event.h"
#include "platform/menubar/Menu.h"

#include <limits>

namespace tavro {
namespace {

using namespace KeyboardShortcuts;
using Combination = SimulatedHotKeyCenter::Combination;
using Combinations = std::vector<Combination>;

constexpr std::uint32_t commandShift = cmdKey | shiftKey;

class KeyboardShortcutsTest : public SimulatedMacTest {
protected:
    Combinations registered() { return mac.hotKeyCenter().registered(); }
    std::optional<PropertyList> stored() { return mac.userDefaults().object(name.key()); }
    Process process{mac};
    const Name name{"test"};
    const Shortcut m{46, commandShift};
    const Shortcut p{35, cmdKey};
    int changes = 0;
    const Observation observation =
        process.notificationCenter().addObserver(shortcutByNameDidChange, [this] { ++changes; });
};

TEST_F(KeyboardShortcutsTest, DescriptionListsModifiersAndKeyLabel) {
    const std::pair<Shortcut, const char*> cases[] = {
        {m, "⇧⌘M"},
        {{46, 0x40000 | cmdKey}, "⌘M"},
        {{0, 0x1B00}, "⌃⌥⇧⌘A"},
        {{49, optionKey}, "⌥⎵"},
        {{96, 0}, "F5"},
        {{114, 0}, "?\u20DD"},
        {{52, 0}, "\uFFFD"},
        {{-1, 0}, "\uFFFD"},
        {{65535, 0}, "\uFFFD"},
        {{65536 + 46, cmdKey}, "⌘\uFFFD"},
    };
    for (const auto& [shortcut, text] : cases)
        EXPECT_EQ(shortcut.description(), text) << shortcut.carbonKeyCode();
    const std::pair<const char*, const char*> labels[] = {
        {"`aß€", "`ASS€"}, {"\xC3", "\xC3"}, {"\xC3z", "\xC3Z"}};
    for (const auto& [label, text] : labels) {
        mac.keyboardLayout().relabel(46, label);
        EXPECT_EQ(Shortcut(46, 0).description(), text);
    }
}

TEST_F(KeyboardShortcutsTest, OnlyKeyEventsBecomeShortcuts) {
    using namespace EventModifierFlags;
    for (const auto type : {EventType::keyDown, EventType::keyUp})
        EXPECT_EQ(Shortcut::of(Event{type, command | shift | capsLock | function, 46}), m);
    EXPECT_EQ(Shortcut::of(Event{EventType::leftMouseUp, command, 46}), std::nullopt);
}

TEST_F(KeyboardShortcutsTest, RecordNeedsTwoIntegers) {
    using Limits = std::numeric_limits<std::int64_t>;
    const std::pair<const char*, std::optional<Shortcut>> records[] = {
        {"\n{ \"carbonKeyCode\" : 46, \"carbonModifiers\" : 768, \"more\" : [{}] }", m},
        {R"({"carbonModifiers":-1,"carbonKeyCode":-9223372036854775808})", {{Limits::min(), 0x1B00}}},
        {R"({"carbonModifiers":0,"carbonKeyCode":9223372036854775807})", {{Limits::max(), 0}}},
        {R"({"carbonModifiers":0,"carbonKeyCode":9223372036854775808})", {}},
        {R"({"carbonModifiers":768,"carbonKeyCode":46.5})", {}},
        {R"({"carbonModifiers":768,"carbonKeyCode":"46"})", {}},
        {R"({"carbonKeyCode":46})", {}},
        {R"({"carbonModifiers":768})", {}},
        {R"([768,46])", {}},
        {"", {}}};
    for (const auto& [record, shortcut] : records) {
        mac.userDefaults().setObject(name.key(), record);
        EXPECT_EQ(getShortcut(name), shortcut) << record;
    }
    mac.userDefaults().setObject(name.key(), PropertyList::Dictionary{{"carbonKeyCode", 46}});
    EXPECT_EQ(getShortcut(name), std::nullopt);
}

TEST_F(KeyboardShortcutsTest, SettingStoresRegistersAndNotifies) {
    setShortcut(std::nullopt, name);
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_EQ(changes, 0);
    setShortcut(m, name);
    setShortcut(m, name);
    EXPECT_EQ(stored(), PropertyList(R"({"carbonKeyCode":46,"carbonModifiers":768})"));
    EXPECT_EQ(registered(), (Combinations{{46, commandShift}}));
    setShortcut(p, name);
    EXPECT_EQ(registered(), (Combinations{{35, cmdKey}}));
    disable(name);
    EXPECT_EQ(registered(), Combinations{});
    EXPECT_EQ(getShortcut(name), p);
    enable(name);
    enable(name);
    EXPECT_EQ(registered(), (Combinations{{35, cmdKey}}));
    setShortcut(std::nullopt, name);
    EXPECT_EQ(registered(), Combinations{});
    EXPECT_EQ(stored(), PropertyList(false));
    EXPECT_EQ(changes, 4);
}

TEST_F(KeyboardShortcutsTest, DefaultAppliesOnlyToAnUnsetName) {
    const Name withDefault("test", m);
    EXPECT_EQ(withDefault, name);
    EXPECT_EQ(getShortcut(name), m);
    EXPECT_EQ(registered().size(), 1u);
    setShortcut(std::nullopt, name);
    const Name again("test", m);
    EXPECT_EQ(stored(), PropertyList(false));
    reset({name, again});
    EXPECT_EQ(getShortcut(name), m);
    reset({again, name});
    EXPECT_EQ(stored(), PropertyList(false));
    EXPECT_EQ(changes, 5);
}

TEST_F(KeyboardShortcutsTest, PressRunsTheActionsOfEveryNameWithTheShortcut) {
    std::string ran, ofOther;
    const auto press = [&] {
        ran = ofOther = "";
        mac.hotKeyCenter().type({46, commandShift});
        return ran + ofOther;
    };
    const Name other("other");
    setShortcut(m, name);
    setShortcut(m, other);
    onKeyDown(name, [&] { ran += "1 "; });
    onKeyDown(name, [&] { ran += "2 "; });
    onKeyUp(name, [&] { ran += "up "; });
    onKeyDown(other, [&] {
        ofOther += "other";
        onKeyDown(other, [] {}); // while they run
    });
    EXPECT_EQ(press(), "1 2 up other");
    setPaused(true);
    EXPECT_EQ(press(), "");
    setPaused(false);
    mac.userDefaults().setObject(name.key(), encode(p)); // past the set path, so ⇧⌘M is still taken
    EXPECT_EQ(press(), "other");
    EXPECT_EQ(mac.hotKeyCenter().handlerCount(), 1u);
}

TEST_F(KeyboardShortcutsTest, RefusedShortcutIsNotRetriedUntilSetAgain) {
    ASSERT_TRUE(mac.hotKeyCenter().otherProgramTakes({46, commandShift}));
    setShortcut(m, name);
    EXPECT_EQ(getShortcut(name), m);
    EXPECT_EQ(mac.hotKeyCenter().handlerCount(), 0u);
    mac.hotKeyCenter().otherProgramLetsGo({46, commandShift});
    enable(name);
    EXPECT_EQ(registered(), Combinations{});
    setShortcut(m, name);
    EXPECT_EQ(registered(), (Combinations{{46, commandShift}}));
    for (const std::int64_t keyCode : {std::int64_t{-1}, std::int64_t{1} << 32}) {
        setShortcut(Shortcut(keyCode, 0), name);
        EXPECT_EQ(registered(), Combinations{});
    }
}

TEST_F(KeyboardShortcutsTest, ForeignEventsAreDeclined) {
    Lines handled;
    const auto take = [&](const Shortcut& shortcut) {
        CarbonKeyboardShortcuts::registerShortcut(
            shortcut, [&](const auto& s) { handled.push_back("down " + s.description()); },
            [&](const auto& s) { handled.push_back("up " + s.description()); });
    };
    const auto send = [this](std::uint32_t kind, Result<EventHotKeyID, OSStatus> id) {
        const HotKeyEvent event{kind, id};
        return mac.hotKeyCenter().send(&event);
    };
    constexpr std::uint32_t ours = 0x5A51484B;
    mac.hotKeyCenter().otherProgramTakes({35, cmdKey});
    mac.hotKeyCenter().hasDispatcher = false;
    take(p); // refused, its number is used up
    take(m);
    EXPECT_EQ(mac.hotKeyCenter().handlerCount(), 0u);
    mac.hotKeyCenter().hasDispatcher = true;
    take(m);
    EXPECT_EQ(mac.hotKeyCenter().send(nullptr), eventNotHandledErr);
    EXPECT_EQ(send(kEventHotKeyPressed, OSStatus{-50}), -50);
    EXPECT_EQ(send(kEventHotKeyPressed, EventHotKeyID{ours + 1, 2}), eventNotHandledErr);
    EXPECT_EQ(send(kEventHotKeyPressed, EventHotKeyID{ours, 1}), eventNotHandledErr);
    EXPECT_EQ(send(7, EventHotKeyID{ours, 2}), eventNotHandledErr);
    EXPECT_EQ(handled, Lines{});
    EXPECT_EQ(send(kEventHotKeyPressed, EventHotKeyID{ours, 2}), noErr);
    EXPECT_EQ(send(kEventHotKeyReleased, EventHotKeyID{ours, 3}), noErr);
    EXPECT_EQ(handled, (Lines{"down ⇧⌘M", "up ⇧⌘M"}));
    CarbonKeyboardShortcuts::unregister(m); // both
    EXPECT_EQ(send(kEventHotKeyReleased, EventHotKeyID{ours, 3}), eventNotHandledErr);
    take(m);
    take(Shortcut(35, 0));
    CarbonKeyboardShortcuts::unregisterAll();
    EXPECT_EQ(registered(), Combinations{});
}

TEST_F(KeyboardShortcutsTest, InvalidSystemShortcutsAreSkipped) {
    using Dictionary = PropertyList::Dictionary;
    const auto entry = [](PropertyList isEnabled, PropertyList code, PropertyList modifiers) {
        return Dictionary{{"kHISymbolicHotKeyEnabled", std::move(isEnabled)},
                          {"kHISymbolicHotKeyCode", std::move(code)},
                          {"kHISymbolicHotKeyModifiers", std::move(modifiers)}};
    };
    PropertyList::Array entries{entry(true, 35, 0x20000 | cmdKey),
                                entry(false, 46, 768),
                                entry(1, 46, 768),
                                entry(true, "46", 768),
                                entry(true, 46, 768.0),
                                Dictionary()};
    mac.hotKeyCenter().symbolicHotKeys = entries;
    CarbonKeyboardShortcuts::refreshSystemShortcuts();
    EXPECT_EQ(CarbonKeyboardShortcuts::systemShortcuts(), std::vector{p});
    EXPECT_TRUE(CarbonKeyboardShortcuts::isTakenBySystem(p));
    EXPECT_FALSE(CarbonKeyboardShortcuts::isTakenBySystem(m));
    entries.emplace_back("no dictionary");
    using List = std::optional<PropertyList>;
    for (const auto& list : {List(entries), List(7), List()}) {
        mac.hotKeyCenter().symbolicHotKeys = list;
        CarbonKeyboardShortcuts::refreshSystemShortcuts();
        EXPECT_EQ(CarbonKeyboardShortcuts::systemShortcuts(), std::vector<Shortcut>{});
    }
}

TEST_F(KeyboardShortcutsTest, FindsMenuItemsByKeyAndModifiers) {
    using namespace EventModifierFlags;
    const auto submenu = std::make_shared<Menu>("File");
    submenu->items = {{"Close", nullptr, "w"}, {"Mute", nullptr, "m", command | shift}};
    Menu menu("Main");
    menu.items = {{"File", nullptr, "", command, submenu},
                  {"Upper case", nullptr, "M", command | shift},
                  {"Close too", nullptr, "w"}};
    const std::pair<Shortcut, const MenuItem*> cases[] = {
        {m, &submenu->items[1]},
        {{13, cmdKey}, &submenu->items[0]},
        {{13, cmdKey | shiftKey}, nullptr},
        {{52, cmdKey}, nullptr}, // no text is not an empty text
    };
    for (const auto& [shortcut, item] : cases)
        EXPECT_EQ(shortcut.menuItemWithMatchingShortcut(menu), item) << shortcut.description();
}

} // namespace
} // namespace tavro
