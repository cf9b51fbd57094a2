#pragma once

#include "platform/process/Machine.h"
#include "platform/process/MainQueue.h"
#include "platform/windows/Geometry.h"
#include "platform/windows/Identifiers.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavro {

/// A machine with everything around it that a contract needs: other programs and their user, and the window
/// server's own view of what is on the screen. One is made for each test and leaves nothing behind.
///
/// Windows of other programs are known by their titles, which a test uses once; audio devices by their unique
/// identifiers, and devices that a test did not add may be there too. Keys are named by their virtual codes,
/// modifiers by the bits of hot keys. What a user or a program does may take effect later; contracts wait for
/// the effect by `waitUntil`.
class TestMachine {
public:
    virtual ~TestMachine() = default;

    virtual Machine& machine() = 0;
    /// Lets the main thread run until the condition holds; false when a deadline passes first.
    virtual bool waitUntil(const std::function<bool()>& condition) = 0;
    /// The process dies without a word, and starts again on what it left: `machine()` is another one where a
    /// process has one of its own.
    virtual void relaunch() = 0;

    /// An application opens one more window, on top of all, and is in front when this returns; it starts if
    /// it has no window yet.
    virtual void openWindow(const std::string& application, const std::string& title, Rect frame) = 0;
    virtual void quit(const std::string& application) = 0;
    virtual void clickWindow(const std::string& title) = 0;
    virtual void minimise(const std::string& title) = 0;
    /// The titles of the windows of other programs that are on screen, bottom to top.
    virtual std::vector<std::string> shownTitles() const = 0;
    /// Where a window of the machine stands on screen; none when it does not.
    virtual std::optional<Rect> shownFrame(WindowNumber window) const = 0;

    /// A device with one side, not muted, and this name; returns its unique identifier.
    virtual std::string addInputDevice(const std::string& name) = 0;
    virtual std::string addOutputDevice(const std::string& name) = 0;
    virtual void removeDevice(const std::string& uid) = 0;
    virtual void setDefaultInput(const std::string& uid) = 0;
    virtual void setDefaultOutput(const std::string& uid) = 0;
    /// Another program sets the mute flag; returns when it is set.
    virtual void otherProgramSetsMute(const std::string& uid, bool mute) = 0;
    /// The flag as another program sees it.
    virtual bool isMutedOnServer(const std::string& uid) = 0;

    /// The user holds the modifiers down and presses the key; lets the key go; lets the modifiers go.
    virtual void pressKey(std::uint32_t keyCode, std::uint32_t modifiers) = 0;
    virtual void releaseKey(std::uint32_t keyCode) = 0;
    virtual void releaseModifiers(std::uint32_t modifiers) = 0;
    /// Another program takes the combination, whatever else is held down; whether it got it.
    virtual bool otherProgramTakesKey(std::uint32_t keyCode, std::uint32_t modifiers) = 0;
    virtual void otherProgramLetsGoOfKey(std::uint32_t keyCode, std::uint32_t modifiers) = 0;
};

/// Of the machine that the test program is linked with.
std::unique_ptr<TestMachine> makeTestMachine();

/// A test of one service, on a machine of its own.
class Contract : public testing::Test {
protected:
    using Titles = std::vector<std::string>;

    Machine& machine() { return testMachine->machine(); }
    bool waitUntil(const std::function<bool()>& condition) { return testMachine->waitUntil(condition); }
    testing::AssertionResult shows(const Titles& titles) {
        if (waitUntil([&] { return testMachine->shownTitles() == titles; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "shows " << testing::PrintToString(testMachine->shownTitles());
    }
    testing::AssertionResult hears(const std::string& expected) {
        const bool hasHeard = waitUntil([&] { return heard == expected; });
        return (hasHeard ? testing::AssertionSuccess() : testing::AssertionFailure()) << "heard " << heard;
    }

    static constexpr Rect place{{120, 150}, {500, 300}};

    /// What listeners and handlers write down.
    std::string heard;
    const std::unique_ptr<TestMachine> testMachine = makeTestMachine();
};

} // namespace tavro
