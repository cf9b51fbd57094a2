#include "support/machines/TestMachine.h"

#include "platform/input/HotKeyCenter.h"

namespace tavro {
namespace {

class HotKeyCenterContract : public Contract {
protected:
    static constexpr std::uint32_t m = 46, p = 35, commandShift = cmdKey | shiftKey;

    HotKeyCenter& center() { return machine().hotKeyCenter(); }

    void listen(OSStatus answer = noErr) {
        constexpr EventTypeSpec events[] = {{kEventClassKeyboard, kEventHotKeyPressed},
                                            {kEventClassKeyboard, kEventHotKeyReleased}};
        auto handler = EventHandlerRef::none;
        const auto hear = [this, answer](const auto* event) {
            EXPECT_EQ(event->directObject->signature, 'T');
            heard += event->kind == kEventHotKeyPressed ? '+' : '-';
            heard += std::to_string(event->directObject->id) + ' ';
            return answer;
        };
        EXPECT_EQ(center().installEventHandler(center().getEventDispatcherTarget(), hear, events, handler),
                  noErr);
        EXPECT_NE(handler, EventHandlerRef::none);
    }
    OSStatus attempt(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t id, EventHotKeyRef& key) {
        return center().registerEventHotKey(keyCode, modifiers, {'T', id},
                                            center().getEventDispatcherTarget(), 0, key);
    }
    EventHotKeyRef take(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t id) {
        auto key = EventHotKeyRef::none;
        EXPECT_EQ(attempt(keyCode, modifiers, id, key), noErr);
        return key;
    }
    void type(std::uint32_t keyCode, std::uint32_t modifiers) {
        testMachine->pressKey(keyCode, modifiers);
        testMachine->releaseKey(keyCode);
        testMachine->releaseModifiers(modifiers);
    }
};

TEST_F(HotKeyCenterContract, EachPressAndReleaseReachesItsHotKey) {
    listen();
    take(m, commandShift, 1);
    take(m, cmdKey, 2);
    const auto again = take(m, cmdKey, 3);
    take(p, controlKey | optionKey, 4);
    testMachine->pressKey(m, commandShift);
    EXPECT_TRUE(hears("+1 "));
    testMachine->releaseModifiers(commandShift); // before the key
    testMachine->releaseKey(m);
    EXPECT_TRUE(hears("+1 -1 "));
    type(m, 0);
    type(m, commandShift | optionKey);
    type(m, cmdKey);
    type(p, controlKey | optionKey);
    EXPECT_TRUE(hears("+1 -1 +2 +3 -2 -3 +4 -4 "));
    center().unregisterEventHotKey(again);
    type(m, cmdKey);
    EXPECT_TRUE(hears("+1 -1 +2 +3 -2 -3 +4 -4 +2 -2 "));
}

TEST_F(HotKeyCenterContract, HandlersAreCalledUntilOneHandlesTheEvent) {
    listen(eventNotHandledErr);
    listen();
    listen();
    take(m, commandShift, 1);
    type(m, commandShift);
    EXPECT_TRUE(hears("+1 +1 -1 -1 "));
}

TEST_F(HotKeyCenterContract, TwoKeysAtATimeAreEachFollowedToTheirRelease) {
    listen();
    take(m, commandShift, 1);
    take(p, commandShift, 2);
    testMachine->pressKey(m, commandShift);
    testMachine->pressKey(p, 0);
    testMachine->releaseKey(m);
    EXPECT_TRUE(hears("+1 +2 -1 "));
    testMachine->releaseKey(p);
    testMachine->releaseModifiers(commandShift);
    EXPECT_TRUE(hears("+1 +2 -1 -2 "));
    // Faster than any hand, while the machine may still be busy with the last release.
    for (const auto* each : {"+1 -1 ", "+2 -2 ", "+1 -1 "}) {
        heard.clear();
        type(each[1] == '1' ? m : p, commandShift);
        EXPECT_TRUE(hears(each));
    }
}

TEST_F(HotKeyCenterContract, AKeyTakenByAnotherProgramIsRefusedUntilItIsFree) {
    listen();
    ASSERT_TRUE(testMachine->otherProgramTakesKey(m, commandShift));
    auto key = EventHotKeyRef::none;
    EXPECT_EQ(attempt(m, commandShift, 1, key), eventHotKeyExistsErr);
    EXPECT_EQ(attempt(4000, commandShift, 1, key), eventHotKeyInvalidErr);
    EXPECT_EQ(key, EventHotKeyRef::none);
    testMachine->otherProgramLetsGoOfKey(m, commandShift);
    take(m, commandShift, 1);
    EXPECT_FALSE(testMachine->otherProgramTakesKey(m, commandShift));
    type(m, commandShift);
    EXPECT_TRUE(hears("+1 -1 "));
}

TEST_F(HotKeyCenterContract, KeysAreReleasedWithTheirRegistrationOrTheProcess) {
    for (int round = 0; round < 100; ++round) {
        const auto key = take(m, commandShift, 1);
        EXPECT_EQ(center().unregisterEventHotKey(key), noErr);
        EXPECT_EQ(center().unregisterEventHotKey(key), eventHotKeyInvalidErr);
    }
    for (const bool isOfTheProcess : {false, true}) {
        if (isOfTheProcess) {
            take(m, commandShift, 1);
            testMachine->relaunch();
        }
        ASSERT_TRUE(testMachine->otherProgramTakesKey(m, commandShift));
        testMachine->otherProgramLetsGoOfKey(m, commandShift);
    }
}

} // namespace
} // namespace tavro
