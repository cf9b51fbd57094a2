#include "platform/linux/x11/ClientWindow.h"

#include "platform/linux/x11/XConnection.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <numeric>

namespace tavro {
namespace {

XAtoms numberedAtoms() {
    std::array<xcb_atom_t, sizeof(XAtoms) / sizeof(xcb_atom_t)> numbers{};
    std::iota(numbers.begin(), numbers.end(), 100);
    return std::bit_cast<XAtoms>(numbers);
}

TEST(ClientWindowTest, IsWhatItsPropertiesSay) {
    const auto x = numberedAtoms();
    const struct {
        const char* what;
        std::vector<std::uint32_t> state, types, actions;
        std::optional<std::uint32_t> transientFor;
        bool isApplicationWindow = false, isMinimised = false, canMinimise = true;
    } cases[] = {
        {"nothing said", {}, {}, {}, {}, true},
        {"minimised", {x.netWmStateBelow, x.netWmStateHidden}, {}, {}, {}, true, true},
        {"not in taskbars", {x.netWmStateSkipTaskbar}, {}, {}, {}},
        {"not in pagers", {x.netWmStateSkipPager}, {}, {}, {}, true},
        {"transient", {}, {}, {}, 7},
        {"transient for nothing", {}, {}, {}, 0, true},
        {"of another type", {}, {5}, {}, {}, true},
        {"desktop", {}, {5, x.netWmWindowTypeDesktop}, {}, {}},
        {"panel", {}, {x.netWmWindowTypeDock}, {}, {}},
        {"notification", {}, {x.netWmWindowTypeNotification}, {}, {}},
        {"splash screen", {}, {x.netWmWindowTypeSplash}, {}, {}},
        {"menu", {}, {x.netWmWindowTypeMenu}, {}, {}},
        {"toolbar", {}, {x.netWmWindowTypeToolbar}, {}, {}},
        {"may be minimised", {}, {}, {5, x.netWmActionMinimize}, {}, true},
        {"may not", {}, {}, {5}, {}, true, false, false},
    };
    for (const auto& [what, state, types, actions, transientFor, isApplicationWindow, isMinimised,
                      canMinimise] : cases) {
        SCOPED_TRACE(what);
        const auto window = ClientWindow::from(9, {{}, state, types, actions, {}, transientFor, {}}, x);
        EXPECT_EQ(window.isApplicationWindow, isApplicationWindow);
        EXPECT_EQ(window.isMinimised, isMinimised);
        EXPECT_EQ(window.canMinimise, canMinimise);
        EXPECT_EQ(window.workspace, ClientWindow::allWorkspaces);
    }
    const auto window = ClientWindow::from(9, {{"org.example.App", "", "", {}, {}}, {}, {}, {}, 3, {}, 5}, x);
    EXPECT_EQ(window.id, 9u);
    EXPECT_EQ(window.application, "org.example.App");
    EXPECT_EQ(window.workspace, 3u);
    EXPECT_EQ(window.hiddenMark, 5u);
}

TEST(ClientWindowTest, BelongsToAnApplicationByTheStrongestHint) {
    const std::string wmClass("name\0Class\0", 11);
    const std::pair<ApplicationHints, const char*> cases[] = {
        {{"org.example.App", "app.desktop", wmClass, 1, 2}, "org.example.App"},
        {{"", "app.desktop", wmClass, 1, 2}, "app.desktop"},
        {{"", "", wmClass, 1, 2}, "Class"},
        {{"", "", "alone", 1, 2}, "alone"},
        {{"", "", "", 1, 2}, "leader 1"},
        {{"", "", "", {}, 2}, "pid 2"},
        {{}, "window 9"},
    };
    for (const auto& [hints, application] : cases)
        EXPECT_EQ(applicationOf(9, hints), application);
}

} // namespace
} // namespace tavro
