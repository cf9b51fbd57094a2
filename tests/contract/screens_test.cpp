#include "support/machines/TestMachine.h"

#include "platform/windows/Screens.h"

#include <algorithm>
#include <set>

namespace tavro {
namespace {

class ScreensContract : public Contract {
protected:
    Screens& service() { return machine().screens(); }
    static std::optional<std::uint32_t> numberOf(const Screen& screen) {
        const auto entry = screen.deviceDescription.find("NSScreenNumber");
        return entry == screen.deviceDescription.end() ? std::nullopt : entry->second.exactUInt32();
    }
};

TEST_F(ScreensContract, TheFirstScreenIsTheOriginOfBothCoordinateSystems) {
    const auto screens = service().screens();
    ASSERT_FALSE(screens.empty());
    EXPECT_EQ(screens[0].frame.origin, Point{});
    EXPECT_EQ(service().mainDisplayID(), DisplayID(numberOf(screens[0]).value_or(0)));
    for (const auto& screen : screens) {
        const auto number = numberOf(screen);
        ASSERT_TRUE(number);
        const auto& frame = screen.frame;
        const auto top = screens[0].frame.size.height - frame.origin.y - frame.size.height;
        EXPECT_GT(frame.size.width * frame.size.height, 0);
        EXPECT_EQ(service().displayBounds(DisplayID(*number)), (Rect{{frame.origin.x, top}, frame.size}));
    }
}

TEST_F(ScreensContract, NumbersAreUniqueAndStayWithTheirScreens) {
    const auto screens = service().screens();
    std::set<std::uint32_t> numbers;
    for (const auto& screen : screens)
        EXPECT_TRUE(numbers.insert(numberOf(screen).value_or(0)).second);
    EXPECT_EQ(service().screens(), screens);
    const auto mainScreen = service().mainScreen();
    ASSERT_TRUE(mainScreen);
    EXPECT_NE(std::ranges::find(screens, *mainScreen), screens.end());
    // No display has this number.
    EXPECT_EQ(service().displayBounds(DisplayID(0xfffffff0)), Rect{});
}

} // namespace
} // namespace tavro
