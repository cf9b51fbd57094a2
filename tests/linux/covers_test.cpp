#include "platform/linux/windows/Covers.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

using What = Covers::Command::What;
using Commands = std::vector<Covers::Command>;

constexpr xcb_window_t left = 1, right = 2, icons = 10, otherIcons = 11, editor = 20, frame = 30;

class CoversTest : public testing::Test {
protected:
    CoversTest() {
        covers.add(left, true);
        covers.add(right, false);
    }
    Commands restack(const std::vector<xcb_window_t>& order) {
        std::vector<Covers::StackedWindow> stacking;
        for (const auto window : order)
            stacking.push_back({window, window < editor}); // covers are of that type, too
        covers.restacked(stacking);
        return covers.takeCommands();
    }

    Covers covers;
};

TEST_F(CoversTest, AreRaisedAboveEveryOtherDesktopWindowAndNothingElse) {
    const Covers::Command raiseLeft{What::raise, left}, raiseRight{What::raise, right};
    const struct {
        const char* what;
        std::vector<xcb_window_t> order; // bottom to top
        Commands expected;
    } cases[] = {
        {"where they belong", {icons, left, right, editor}, {}},
        {"without icons", {left, right, editor}, {}},
        {"above a window", {icons, left, editor, right}, {}},
        {"icons above both", {left, right, icons, editor}, {raiseRight, raiseLeft}},
        {"icons between", {left, icons, right, editor}, {raiseLeft}},
        {"one of two icon windows above", {icons, left, otherIcons, right, editor}, {raiseLeft}},
    };
    for (const auto& [what, order, expected] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(restack(order), expected);
    }
    covers.remove(left);
    EXPECT_EQ(restack({left, right, icons}), Commands{raiseRight});
}

TEST_F(CoversTest, GiveUpAgainstAProgramThatInsists) {
    int raises = 0;
    while (!restack({left, icons, right}).empty() && raises < 1000)
        ++raises;
    EXPECT_EQ(raises, 100);
    covers.add(left, true);
    EXPECT_EQ(restack({left, icons, right}).size(), 1u) << "shown again, and no new chance";
}

TEST_F(CoversTest, EmptyTheFramesOfThoseThatPassClicks) {
    const Covers::Command watch{What::watchFrame, frame}, pass{What::passClicks, frame};
    covers.framed(right, frame); // which takes clicks itself
    covers.framed(editor, frame);
    covers.takesClicks(frame);
    EXPECT_EQ(covers.takeCommands(), Commands{});
    covers.framed(left, frame);
    EXPECT_EQ(covers.takeCommands(), (Commands{watch, pass}));
    covers.takesClicks(frame);
    EXPECT_EQ(covers.takeCommands(), Commands{pass});
    covers.remove(left);
    covers.takesClicks(frame);
    EXPECT_EQ(covers.takeCommands(), Commands{});
}

} // namespace
} // namespace tavro
