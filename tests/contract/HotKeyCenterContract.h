#pragma once

#include "Rig.h"

#include "platform/HotKeyCenter.h"

#include <array>

namespace tavro {

/// A rig with a keyboard. Keys are named by their virtual codes, modifiers by the bits of hot keys.
template <class R>
concept KeyboardRig = Rig<R> && requires(R rig, std::uint32_t keyCode, std::uint32_t modifiers) {
    /// The user holds the modifiers down and presses the key; lets the key go; lets the modifiers go.
    rig.pressKey(keyCode, modifiers);
    rig.releaseKey(keyCode);
    rig.releaseModifiers(modifiers);
    /// Another program takes the combination in every state of the lock keys; whether it got it.
    { rig.otherProgramTakesKey(keyCode, modifiers) } -> std::same_as<bool>;
    rig.otherProgramLetsGoOfKey(keyCode, modifiers);
};

template <KeyboardRig R>
class HotKeyCenterContract : public Contract<R> {
protected:
    static constexpr std::uint32_t m = 46, p = 35, commandShift = cmdKey | shiftKey;

    HotKeyCenter& center() { return this->machine().hotKeyCenter(); }

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
        this->rig.pressKey(keyCode, modifiers);
        this->rig.releaseKey(keyCode);
        this->rig.releaseModifiers(modifiers);
    }
    testing::AssertionResult isTold(const std::string& expected) {
        if (this->waitUntil([&] { return told == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "told " << told;
    }

    std::string told;
};

TYPED_TEST_SUITE_P(HotKeyCenterContract);

TYPED_TEST_P(HotKeyCenterContract, APressAndARelease) {
    this->listen();
    this->take(this->m, this->commandShift, 1);
    this->take(this->m, cmdKey, 2);
    const auto again = this->take(this->m, cmdKey, 3);
    this->take(this->p, controlKey | optionKey, 4);
    this->rig.pressKey(this->m, this->commandShift);
    EXPECT_TRUE(this->isTold("+1 "));
    this->rig.releaseModifiers(this->commandShift); // before the key
    this->rig.releaseKey(this->m);
    EXPECT_TRUE(this->isTold("+1 -1 "));
    this->type(this->m, 0);
    this->type(this->m, this->commandShift | optionKey);
    this->type(this->m, cmdKey);
    this->type(this->p, controlKey | optionKey);
    EXPECT_TRUE(this->isTold("+1 -1 +2 +3 -2 -3 +4 -4 "));
    this->center().unregisterEventHotKey(again);
    this->type(this->m, cmdKey);
    EXPECT_TRUE(this->isTold("+1 -1 +2 +3 -2 -3 +4 -4 +2 -2 "));
}

TYPED_TEST_P(HotKeyCenterContract, HandlersAreAskedUntilOneHasDealtWithTheEvent) {
    this->listen(eventNotHandledErr);
    this->listen();
    this->listen();
    this->take(this->m, this->commandShift, 1);
    this->type(this->m, this->commandShift);
    EXPECT_TRUE(this->isTold("+1 +1 -1 -1 "));
}

TYPED_TEST_P(HotKeyCenterContract, TwoKeysAtATimeAreEachFollowedToTheirRelease) {
    this->listen();
    this->take(this->m, this->commandShift, 1);
    this->take(this->p, this->commandShift, 2);
    this->rig.pressKey(this->m, this->commandShift);
    this->rig.pressKey(this->p, 0);
    this->rig.releaseKey(this->m);
    EXPECT_TRUE(this->isTold("+1 +2 -1 "));
    this->rig.releaseKey(this->p);
    this->rig.releaseModifiers(this->commandShift);
    EXPECT_TRUE(this->isTold("+1 +2 -1 -2 "));
    // Faster than any hand, while the machine may still be busy with the last release.
    for (const auto* each : {"+1 -1 ", "+2 -2 ", "+1 -1 "}) {
        this->told.clear();
        this->type(each[1] == '1' ? this->m : this->p, this->commandShift);
        EXPECT_TRUE(this->isTold(each));
    }
}

TYPED_TEST_P(HotKeyCenterContract, AKeyOfAnotherProgramIsRefusedAndAskedForAnewWhenItIsFree) {
    this->listen();
    ASSERT_TRUE(this->rig.otherProgramTakesKey(this->m, this->commandShift));
    auto reference = EventHotKeyRef::none;
    const auto attempt = [&](std::uint32_t keyCode) {
        return this->center().registerEventHotKey(keyCode, this->commandShift, {'T', 1},
                                                  this->center().getEventDispatcherTarget(), 0, reference);
    };
    EXPECT_EQ(attempt(this->m), eventHotKeyExistsErr);
    EXPECT_EQ(attempt(4000), eventHotKeyInvalidErr);
    EXPECT_EQ(reference, EventHotKeyRef::none);
    this->rig.otherProgramLetsGoOfKey(this->m, this->commandShift);
    EXPECT_EQ(attempt(this->m), noErr);
    EXPECT_FALSE(this->rig.otherProgramTakesKey(this->m, this->commandShift));
    this->type(this->m, this->commandShift);
    EXPECT_TRUE(this->isTold("+1 -1 "));
}

TYPED_TEST_P(HotKeyCenterContract, NothingIsLeftOfAHundredRounds) {
    for (int round = 0; round < 100; ++round) {
        const auto reference = this->take(this->m, this->commandShift, 1);
        EXPECT_EQ(this->center().unregisterEventHotKey(reference), noErr);
        EXPECT_EQ(this->center().unregisterEventHotKey(reference), eventHotKeyInvalidErr);
    }
    ASSERT_TRUE(this->rig.otherProgramTakesKey(this->m, this->commandShift));
    this->rig.otherProgramLetsGoOfKey(this->m, this->commandShift);
    this->take(this->m, this->commandShift, 1);
    this->rig.relaunch();
    EXPECT_TRUE(this->rig.otherProgramTakesKey(this->m, this->commandShift));
    this->rig.otherProgramLetsGoOfKey(this->m, this->commandShift);
}

REGISTER_TYPED_TEST_SUITE_P(HotKeyCenterContract, APressAndARelease,
                            HandlersAreAskedUntilOneHasDealtWithTheEvent,
                            TwoKeysAtATimeAreEachFollowedToTheirRelease,
                            AKeyOfAnotherProgramIsRefusedAndAskedForAnewWhenItIsFree,
                            NothingIsLeftOfAHundredRounds);

} // namespace tavro
