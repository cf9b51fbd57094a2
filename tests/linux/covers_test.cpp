#include "platform/linux/windows/Covers.h"

#include <gmock/gmock.h>

#include <functional>

namespace tavro {
namespace {

using What = Covers::Command::What;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr xcb_window_t left = 1, right = 2, icons = 10, otherIcons = 11, editor = 20, frame = 30;

class CoversTest : public testing::Test {
protected:
    CoversTest() {
        covers.add(left, true);
        covers.add(right, false);
    }
    std::vector<Covers::Command> restack(const std::vector<xcb_window_t>& order) {
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
        std::vector<Covers::Command> expected;
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
    EXPECT_THAT(restack({left, right, icons}), ElementsAre(raiseRight));
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
    const struct {
        const char* what;
        std::function<void()> act;
        std::vector<Covers::Command> expected;
    } cases[] = {
        {"a frame of something else", [&] { covers.takesClicks(frame); }, {}},
        {"framed", [&] { covers.framed(left, frame); }, {watch, pass}},
        {"shaped anew", [&] { covers.takesClicks(frame); }, {pass}},
        {"one that takes clicks itself", [&] { covers.framed(right, frame + 1); }, {}},
        {"not ours", [&] { covers.framed(editor, frame + 2); }, {}},
        {"gone",
         [&] {
             covers.remove(left);
             covers.takesClicks(frame);
         },
         {}},
    };
    for (const auto& [what, act, expected] : cases) {
        SCOPED_TRACE(what);
        act();
        EXPECT_EQ(covers.takeCommands(), expected);
    }
    EXPECT_THAT(covers.takeCommands(), IsEmpty());
}

} // namespace
} // namespace tavro
