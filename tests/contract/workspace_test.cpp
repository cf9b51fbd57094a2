#include "support/machines/TestMachine.h"

#include "platform/applications/RunningApplication.h"
#include "platform/applications/Workspace.h"
#include "platform/process/Application.h"
#include "platform/process/MainQueue.h"
#include "platform/windows/TitledWindow.h"
#include "platform/windows/WindowServer.h"

#include <algorithm>
#include <stdexcept>

namespace tavro {
namespace {

/// Running applications, which of them is in front, and hiding.
class WorkspaceContract : public Contract {
protected:
    using Application = std::shared_ptr<RunningApplication>;

    Workspace& workspace() { return machine().workspace(); }
    /// Opens a window and returns its application, which is in front and another one than `other`.
    Application open(const std::string& application, const std::string& title,
                     const Application& other = nullptr) {
        testMachine->openWindow(application, title, place);
        return frontmostOtherThan(other);
    }
    Application frontmostOtherThan(const Application& other) {
        Application front;
        if (!waitUntil([&] {
                front = workspace().frontmostApplication();
                return front && !(other && front->isEqual(*other));
            }))
            throw std::runtime_error("no other application in front");
        return front;
    }
    bool isFrontmost(const Application& application) {
        return waitUntil([&] {
            const auto front = workspace().frontmostApplication();
            return front && front->isEqual(*application);
        });
    }
};

TEST_F(WorkspaceContract, ObserversHearOfActivationsOnceTheyAreInEffect) {
    const auto editor = open("Tavro-Editor", "notes");
    Application browser;
    auto observation = workspace().notificationCenter().addObserver(workspaceDidActivateApplication, [&] {
        const auto front = workspace().frontmostApplication();
        heard += !front                                 ? "none "
                 : front->isEqual(*editor)              ? "editor "
                 : !browser || front->isEqual(*browser) ? "browser "
                                                        : "self ";
    });
    const auto hears = [&](const char* last) { return waitUntil([&] { return heard.ends_with(last); }); };
    browser = open("Tavro-Browser", "page", editor);
    EXPECT_TRUE(hears("browser ")) << heard;
    testMachine->clickWindow("notes");
    EXPECT_TRUE(hears("browser editor ")) << heard;
    const auto own = machine().windowServer().createTitledWindow(
        {.contentRect = {{0, 0}, {50, 50}}, .styleMask = WindowStyleMask::titled, .screen = {}});
    own->makeKeyAndOrderFront();
    machine().application().activate(true);
    frontmostOtherThan(editor);            // this program, which does not hear of itself
    for (int turn = 0; turn < 3; ++turn) { // and has dealt with that
        bool isFree = false;
        machine().mainQueue().async([&] { isFree = true; });
        ASSERT_TRUE(waitUntil([&] { return isFree; }));
    }
    testMachine->clickWindow("notes");
    EXPECT_TRUE(hears("editor editor ")) << heard;
    own->close();
    browser->activate(ApplicationActivationOption::ignoringOtherApps);
    EXPECT_TRUE(hears("editor browser ")) << heard;
    EXPECT_EQ(heard.find("self"), std::string::npos) << heard;
    EXPECT_TRUE(shows({"notes", "page"}));
    observation = Observation();
    testMachine->clickWindow("notes");
    EXPECT_TRUE(isFrontmost(editor));
    EXPECT_TRUE(heard.ends_with("editor browser ")) << heard;
}

TEST_F(WorkspaceContract, HidingTakesEveryVisibleWindowOfTheApplication) {
    const auto editor = open("Tavro-Editor", "notes");
    const auto browser = open("Tavro-Browser", "page", editor);
    const auto again = open("Tavro-Editor", "letter", browser);
    open("Tavro-Editor", "away");
    testMachine->minimise("away");
    for (const auto& application : {editor, browser, again})
        EXPECT_EQ(std::ranges::count_if(workspace().runningApplications(),
                                        [&](const auto& other) { return application->isEqual(*other); }),
                  1);
    EXPECT_TRUE(again->isEqual(*editor));
    EXPECT_FALSE(editor->isEqual(*browser));
    ASSERT_TRUE(shows({"notes", "page", "letter"}));
    editor->unhide(); // which nobody hid
    for (int repeat = 0; repeat < 2; ++repeat) {
        editor->hide();
        EXPECT_TRUE(shows({"page"}));
    }
    for (int repeat = 0; repeat < 2; ++repeat) {
        editor->unhide();
        EXPECT_TRUE(waitUntil([&] { return testMachine->shownTitles().size() == 3; }));
    }
}

TEST_F(WorkspaceContract, TheNextProcessRestoresTheStackingOrder) {
    const auto editor = open("Tavro-Editor", "notes");
    const auto chat = open("Tavro-Chat", "talk", editor);
    open("Tavro-Editor", "letter", chat);
    open("Tavro-Chat", "away", editor);
    testMachine->minimise("away");
    open("Tavro-Browser", "page", chat);
    const Titles before{"notes", "talk", "letter", "page"};
    ASSERT_TRUE(shows(before));
    editor->hide();
    chat->hide();
    ASSERT_TRUE(shows({"page"}));
    testMachine->relaunch();
    const auto front = frontmostOtherThan(nullptr);
    for (const auto& application : workspace().runningApplications())
        application->unhide();
    front->activate(ApplicationActivationOption::ignoringOtherApps);
    EXPECT_TRUE(shows(before));
    for (const auto& application : workspace().runningApplications())
        if (!application->isEqual(*front))
            application->hide();
    ASSERT_TRUE(shows({"page"}));
    testMachine->relaunch();
    workspace().unhideAbandoned();
    EXPECT_TRUE(shows(before));
}

TEST_F(WorkspaceContract, AnOrdinaryWindowOfThisProgramCountsLikeAnyOther) {
    const auto editor = open("Tavro-Editor", "notes");
    const auto window = machine().windowServer().createTitledWindow(
        {.contentRect = place, .styleMask = WindowStyleMask::titled, .screen = {}});
    const auto isShown = [&] {
        return testMachine->shownFrame(WindowNumber(window->windowNumber())).has_value();
    };
    window->makeKeyAndOrderFront();
    machine().application().activate(true);
    const auto self = frontmostOtherThan(editor);
    editor->hide();
    EXPECT_TRUE(shows({}));
    EXPECT_TRUE(isShown());
    editor->unhide();
    editor->activate(ApplicationActivationOption::ignoringOtherApps);
    EXPECT_TRUE(isFrontmost(editor));
    self->hide();
    EXPECT_TRUE(waitUntil([&] { return !isShown(); }));
    self->unhide();
    EXPECT_TRUE(waitUntil(isShown));
}

TEST_F(WorkspaceContract, RequestsToAnApplicationThatHasGoneAreIgnored) {
    const auto editor = open("Tavro-Editor", "notes");
    const auto browser = open("Tavro-Browser", "page", editor);
    testMachine->quit("Tavro-Browser");
    testMachine->clickWindow("notes");
    ASSERT_TRUE(isFrontmost(editor));
    browser->hide();
    browser->unhide();
    browser->activate(ApplicationActivationOption::ignoringOtherApps);
    EXPECT_TRUE(shows({"notes"}));
    EXPECT_TRUE(isFrontmost(editor));
    for (const auto& application : workspace().runningApplications())
        EXPECT_FALSE(application->isEqual(*browser));
}

} // namespace
} // namespace tavro
