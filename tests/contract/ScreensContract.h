#pragma once

#include "Rig.h"

#include "platform/Screens.h"

#include <algorithm>
#include <set>

namespace tavro {

template <Rig R>
class ScreensContract : public Contract<R> {
protected:
    Screens& screens() { return this->machine().screens(); }
    static std::optional<std::uint32_t> number(const Screen& screen) {
        const auto entry = screen.deviceDescription.find("NSScreenNumber");
        return entry == screen.deviceDescription.end() ? std::nullopt : entry->second.exactUInt32();
    }
};

TYPED_TEST_SUITE_P(ScreensContract);

TYPED_TEST_P(ScreensContract, TheFirstScreenIsTheOriginOfBothCoordinateSystems) {
    const auto screens = this->screens().screens();
    ASSERT_FALSE(screens.empty());
    EXPECT_EQ(screens[0].frame.origin, Point{});
    for (const auto& screen : screens) {
        const auto number = this->number(screen);
        ASSERT_TRUE(number);
        const auto& frame = screen.frame;
        const auto top = screens[0].frame.size.height - frame.origin.y - frame.size.height;
        EXPECT_GT(frame.size.width * frame.size.height, 0);
        EXPECT_EQ(this->screens().displayBounds(DisplayID(*number)),
                  (Rect{{frame.origin.x, top}, frame.size}));
    }
}

TYPED_TEST_P(ScreensContract, TheMainDisplayIsThatOfTheFirstScreen) {
    const auto number = this->number(this->screens().screens().front());
    ASSERT_TRUE(number);
    EXPECT_EQ(this->screens().mainDisplayID(), DisplayID(*number));
}

TYPED_TEST_P(ScreensContract, NumbersAreUniqueAndStayWithTheirScreens) {
    const auto screens = this->screens().screens();
    std::set<std::uint32_t> numbers;
    for (const auto& screen : screens)
        EXPECT_TRUE(numbers.insert(this->number(screen).value_or(0)).second);
    EXPECT_EQ(this->screens().screens(), screens);
    const auto mainScreen = this->screens().mainScreen();
    ASSERT_TRUE(mainScreen);
    EXPECT_NE(std::ranges::find(screens, *mainScreen), screens.end());
    // No display has this number.
    EXPECT_EQ(this->screens().displayBounds(DisplayID(0xfffffff0)), Rect{});
}

REGISTER_TYPED_TEST_SUITE_P(ScreensContract, TheFirstScreenIsTheOriginOfBothCoordinateSystems,
                            TheMainDisplayIsThatOfTheFirstScreen, NumbersAreUniqueAndStayWithTheirScreens);

} // namespace tavro
