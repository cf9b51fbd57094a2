#pragma once

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/Identifiers.h"
#include "platform/Machine.h"
#include "platform/MainQueue.h"

#include <gtest/gtest.h>

#include <concepts>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tavro {

/// A machine with everything around it that a contract needs: other programs and their user, and the window
/// server's own view of what is on the screen. A rig is made for each test and leaves nothing behind.
///
/// Windows of other programs are known by their titles, which a test uses once. What a user or a program does
/// may take effect later; contracts wait for the effect by `waitUntil`.
template <class R>
concept Rig = std::default_initializable<R> &&
    requires(R rig, const std::function<bool()>& condition, const std::string& text,
             const std::filesystem::path& file, Rect rect, WindowNumber window, EventType type) {
    { rig.machine() } -> std::same_as<Machine&>;
    /// Lets the main thread run until the condition holds; false when a deadline passes first.
    { rig.waitUntil(condition) } -> std::same_as<bool>;
    /// The time by which the main queue goes.
    { rig.now() } -> std::same_as<MainQueue::Duration>;
    /// The process dies without a word, and starts again on what it left: `machine()` is another
    /// one where a process has one of its own.
    rig.relaunch();

    /// A folder that is empty at first.
    { rig.folder() } -> std::convertible_to<std::filesystem::path>;
    /// Writes a picture of one opaque colour, 0xAARRGGBB, in a format that the machine reads.
    rig.writePicture(file, int(), int(), std::uint32_t());

    /// An application opens one more window, on top of all, and is in front when this returns; it
    /// starts if it has no window yet.
    rig.openWindow(text, text, rect);
    rig.quit(text);
    rig.clickWindow(text);
    rig.minimise(text);
    /// The titles of the windows of other programs that are on screen, bottom to top.
    { rig.shownTitles() } -> std::same_as<std::vector<std::string>>;
    /// Where a window of the machine stands on screen; none when it does not.
    { rig.shownFrame(window) } -> std::same_as<std::optional<Rect>>;

    /// Whether the status bar shows an item of the machine.
    { rig.hasStatusItem() } -> std::same_as<bool>;
    /// The user clicks that item; with the one set of modifiers besides none, Option, whichever
    /// way the status bar delivers it.
    rig.click(type, unsigned());
    { rig.menuIsOpen() } -> std::same_as<bool>;
    /// The user chooses the last item of the open menu, or closes the menu.
    rig.chooseLast();
    rig.closeMenu();
};

/// A test of one service, on a rig of its own.
template <Rig R>
class Contract : public testing::Test {
protected:
    using Titles = std::vector<std::string>;

    Machine& machine() { return rig.machine(); }
    bool waitUntil(const std::function<bool()>& condition) { return rig.waitUntil(condition); }
    testing::AssertionResult shows(const Titles& titles) {
        if (waitUntil([&] { return rig.shownTitles() == titles; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "shows " << testing::PrintToString(rig.shownTitles());
    }

    static constexpr Rect place{{120, 150}, {500, 300}};

    R rig;
};

} // namespace tavro
