#include "support/TestMachine.h"

#include "platform/input/HotKeyCenter.h"

#include <array>

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
        const auto target = center().getEventDispatcherTarget();
        EXPECT_NE(target, EventTargetRef::none);
        EXPECT_EQ(center().installEventHandler(
                      target, [=, this](auto* event) { return hear(*event, answer); }, events, handler),
                  noErr);
        EXPECT_NE(handler, EventHandlerRef::none);
    }
    OSStatus hear(const HotKeyEvent& event, OSStatus answer) {
        told += event.kind == kEventHotKeyPressed ? '+' : event.kind == kEventHotKeyReleased ? '-' : '?';
        EXPECT_EQ(event.directObject->signature, 'T');
        told += std::to_string(event.directObject->id) + ' ';
        return answer;
    }
    EventHotKeyRef take(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t id) {
        auto reference = EventHotKeyRef::none;
        EXPECT_EQ(center().registerEventHotKey(keyCode, modifiers, {'T', id},
                                               center().getEventDispatcherTarget(), 0, reference),
                  noErr);
        return reference;
    }
    void type(std::uint32_t keyCode, std::uint32_t modifiers) {
        testMachine->pressKey(keyCode, modifiers);
        testMachine->releaseKey(keyCode);
        testMachine->releaseModifiers(modifiers);
    }
    testing::AssertionResult isTold(const std::string& expected) {
        if (waitUntil([&] { return told == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "told " << told;
    }

    std::string told;
};

TEST_F(HotKeyCenterContract, APressAndARelease) {
    listen();
    take(m, commandShift, 1);
    take(m, cmdKey, 2);
    const auto again = take(m, cmdKey, 3);
    take(p, controlKey | optionKey, 4);
    testMachine->pressKey(m, commandShift);
    EXPECT_TRUE(isTold("+1 "));
    testMachine->releaseModifiers(commandShift); // before the key
    testMachine->releaseKey(m);
    EXPECT_TRUE(isTold("+1 -1 "));
    type(m, 0);
    type(m, commandShift | optionKey);
    type(m, cmdKey);
    type(p, controlKey | optionKey);
    EXPECT_TRUE(isTold("+1 -1 +2 +3 -2 -3 +4 -4 "));
    center().unregisterEventHotKey(again);
    type(m, cmdKey);
    EXPECT_TRUE(isTold("+1 -1 +2 +3 -2 -3 +4 -4 +2 -2 "));
}

TEST_F(HotKeyCenterContract, HandlersAreAskedUntilOneHasDealtWithTheEvent) {
    listen(eventNotHandledErr);
    listen();
    listen();
    take(m, commandShift, 1);
    type(m, commandShift);
    EXPECT_TRUE(isTold("+1 +1 -1 -1 "));
}

TEST_F(HotKeyCenterContract, TwoKeysAtATimeAreEachFollowedToTheirRelease) {
    listen();
    take(m, commandShift, 1);
    take(p, commandShift, 2);
    testMachine->pressKey(m, commandShift);
    testMachine->pressKey(p, 0);
    testMachine->releaseKey(m);
    EXPECT_TRUE(isTold("+1 +2 -1 "));
    testMachine->releaseKey(p);
    testMachine->releaseModifiers(commandShift);
    EXPECT_TRUE(isTold("+1 +2 -1 -2 "));
    // Faster than any hand, while the machine may still be busy with the last release.
    for (const auto* each : {"+1 -1 ", "+2 -2 ", "+1 -1 "}) {
        told.clear();
        type(each[1] == '1' ? m : p, commandShift);
        EXPECT_TRUE(isTold(each));
    }
}

TEST_F(HotKeyCenterContract, AKeyOfAnotherProgramIsRefusedAndAskedForAnewWhenItIsFree) {
    listen();
    ASSERT_TRUE(testMachine->otherProgramTakesKey(m, commandShift));
    auto reference = EventHotKeyRef::none;
    const auto attempt = [&](std::uint32_t keyCode) {
        return center().registerEventHotKey(keyCode, commandShift, {'T', 1},
                                            center().getEventDispatcherTarget(), 0, reference);
    };
    EXPECT_EQ(attempt(m), eventHotKeyExistsErr);
    EXPECT_EQ(attempt(4000), eventHotKeyInvalidErr);
    EXPECT_EQ(reference, EventHotKeyRef::none);
    testMachine->otherProgramLetsGoOfKey(m, commandShift);
    EXPECT_EQ(attempt(m), noErr);
    EXPECT_FALSE(testMachine->otherProgramTakesKey(m, commandShift));
    type(m, commandShift);
    EXPECT_TRUE(isTold("+1 -1 "));
}

TEST_F(HotKeyCenterContract, NothingIsLeftOfAHundredRounds) {
    for (int round = 0; round < 100; ++round) {
        const auto reference = take(m, commandShift, 1);
        EXPECT_EQ(center().unregisterEventHotKey(reference), noErr);
        EXPECT_EQ(center().unregisterEventHotKey(reference), eventHotKeyInvalidErr);
    }
    ASSERT_TRUE(testMachine->otherProgramTakesKey(m, commandShift));
    testMachine->otherProgramLetsGoOfKey(m, commandShift);
    take(m, commandShift, 1);
    testMachine->relaunch();
    EXPECT_TRUE(testMachine->otherProgramTakesKey(m, commandShift));
    testMachine->otherProgramLetsGoOfKey(m, commandShift);
}

} // namespace
} // namespace tavro
