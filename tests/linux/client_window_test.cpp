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

TEST(ClientWindowTest, IsReadFromItsProperties) {
    const auto x = numberedAtoms();
    const struct {
        const char* what;
        std::vector<std::uint32_t> state, types;
        std::optional<std::uint32_t> transientFor;
        const char* wmClass = "other";
        bool isApplicationWindow = true, isMinimised = false;
    } cases[] = {
        {"nothing said", {}, {}, {}},
        {"minimised", {x.netWmStateBelow, x.netWmStateHidden}, {}, {}, "other", true, true},
        {"not in taskbars", {x.netWmStateSkipTaskbar}, {}, {}},
        {"our popover", {x.netWmStateSkipTaskbar}, {}, {}, "tavropro", false},
        {"our preferences", {}, {}, {}, "tavropro"},
        {"transient", {}, {}, 7, "other", false},
        {"transient for nothing", {}, {}, 0},
        {"of another type", {}, {5}, {}},
        {"desktop", {}, {5, x.netWmWindowTypeDesktop}, {}, "other", false},
        {"panel", {}, {x.netWmWindowTypeDock}, {}, "other", false},
        {"notification", {}, {x.netWmWindowTypeNotification}, {}, "other", false},
    };
    for (const auto& [what, state, types, transientFor, wmClass, isApplicationWindow, isMinimised] : cases) {
        SCOPED_TRACE(what);
        const ClientProperties properties{{"", "", wmClass, {}, {}}, state, types, {}, transientFor, {}};
        const auto window = ClientWindow::from(9, properties, x);
        EXPECT_EQ(window.isApplicationWindow, isApplicationWindow);
        EXPECT_EQ(window.isMinimised, isMinimised);
        EXPECT_EQ(window.workspace, ClientWindow::allWorkspaces);
    }
    const auto window =
        ClientWindow::from(9, {{"org.example.App", "", "", {}, {}}, {}, {}, 3, {}, 0x80000005}, x);
    EXPECT_EQ(window.id, 9u);
    EXPECT_EQ(window.application, "org.example.App");
    EXPECT_EQ(window.workspace, 3u);
    EXPECT_EQ(window.hiddenMark, 5u);
    EXPECT_TRUE(window.isConcealed);
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
