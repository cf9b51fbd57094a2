#pragma once

#include "Rig.h"

#include "platform/Workspace.h"

#include <algorithm>

namespace tavro {

/// Running applications, which of them is in front, and hiding.
template <Rig R>
class WorkspaceContract : public Contract<R> {
protected:
    using Application = std::shared_ptr<RunningApplication>;

    Workspace& workspace() { return this->machine().workspace(); }
    /// Opens a window and returns its application, which is another one than `other`.
    Application open(const std::string& application, const std::string& title,
                     const Application& other = nullptr) {
        this->rig.openWindow(application, title, this->place);
        return frontmostOtherThan(other);
    }
    Application frontmostOtherThan(const Application& other) {
        Application front;
        const bool found = this->waitUntil([&] {
            front = workspace().frontmostApplication();
            return front && !(other && front->isEqual(*other));
        });
        return found ? front : nullptr;
    }
    bool isFrontmost(const Application& application) {
        return this->waitUntil([&] {
            const auto front = workspace().frontmostApplication();
            return front && front->isEqual(*application);
        });
    }
};

TYPED_TEST_SUITE_P(WorkspaceContract);

TYPED_TEST_P(WorkspaceContract, AnApplicationIsEqualToItselfOnly) {
    const auto editor = this->open("Tavro-Editor", "notes");
    const auto browser = this->open("Tavro-Browser", "page", editor);
    ASSERT_TRUE(editor && browser);
    EXPECT_TRUE(editor->isEqual(*editor));
    EXPECT_FALSE(editor->isEqual(*browser));
    const auto running = this->workspace().runningApplications();
    for (const auto& application : {editor, browser})
        EXPECT_EQ(
            std::ranges::count_if(running, [&](const auto& other) { return application->isEqual(*other); }),
            1);
}

TYPED_TEST_P(WorkspaceContract, ActivationsAreToldWhenTheyAreInForce) {
    const auto editor = this->open("Tavro-Editor", "notes");
    const auto browser = this->open("Tavro-Browser", "page", editor);
    ASSERT_TRUE(editor && browser);
    std::string told;
    auto observation =
        this->workspace().notificationCenter().addObserver(workspaceDidActivateApplication, [&] {
            const auto front = this->workspace().frontmostApplication();
            told += !front ? "none " : front->isEqual(*editor) ? "editor " : "browser ";
        });
    this->rig.clickWindow("notes");
    EXPECT_TRUE(this->waitUntil([&] { return told.ends_with("editor "); })) << told;
    browser->activate(ApplicationActivationOption::ignoringOtherApps);
    EXPECT_TRUE(this->waitUntil([&] { return told.ends_with("editor browser "); })) << told;
    observation = Observation();
    this->rig.clickWindow("notes");
    EXPECT_TRUE(this->isFrontmost(editor));
    EXPECT_TRUE(told.ends_with("editor browser ")) << told;
}

TYPED_TEST_P(WorkspaceContract, HidingTakesAllWindowsOfOneApplication) {
    const auto editor = this->open("Tavro-Editor", "notes");
    const auto browser = this->open("Tavro-Browser", "page", editor);
    const auto again = this->open("Tavro-Editor", "letter", browser);
    ASSERT_TRUE(editor && browser && again);
    EXPECT_TRUE(again->isEqual(*editor));
    ASSERT_TRUE(this->shows({"notes", "page", "letter"}));
    editor->hide();
    EXPECT_TRUE(this->shows({"page"}));
    editor->hide();
    editor->unhide();
    EXPECT_TRUE(this->waitUntil([&] { return this->rig.shownTitles().size() == 3; }));
    editor->unhide();
    EXPECT_TRUE(this->waitUntil([&] { return this->rig.shownTitles().size() == 3; }));
}

TYPED_TEST_P(WorkspaceContract, UnhidingRestoresTheStackingAndWhatTheUserHadPutAway) {
    for (const bool isAnotherProcess : {false, true}) {
        SCOPED_TRACE(isAnotherProcess ? "by the next process" : "by the same process");
        const std::string suffix = isAnotherProcess ? "2" : "1";
        const auto editor = this->open("Tavro-Editor" + suffix, "notes" + suffix);
        const auto chat = this->open("Tavro-Chat" + suffix, "talk" + suffix, editor);
        this->open("Tavro-Editor" + suffix, "letter" + suffix, chat);
        this->open("Tavro-Chat" + suffix, "away" + suffix, editor);
        this->rig.minimise("away" + suffix);
        const auto browser = this->open("Tavro-Browser" + suffix, "page" + suffix, chat);
        const std::vector<std::string> before{"notes" + suffix, "talk" + suffix, "letter" + suffix,
                                              "page" + suffix};
        ASSERT_TRUE(this->shows(before));
        editor->hide();
        chat->hide();
        ASSERT_TRUE(this->shows({"page" + suffix}));
        if (isAnotherProcess)
            this->rig.relaunch();
        for (const auto& application : this->workspace().runningApplications())
            application->unhide();
        const auto front = this->frontmostOtherThan(nullptr);
        ASSERT_NE(front, nullptr);
        front->activate(ApplicationActivationOption::ignoringOtherApps);
        EXPECT_TRUE(this->shows(before)) << testing::PrintToString(this->rig.shownTitles());
        for (const auto* application : {"Tavro-Editor", "Tavro-Chat", "Tavro-Browser"})
            this->rig.quit(application + suffix);
        ASSERT_TRUE(this->shows({}));
    }
}

TYPED_TEST_P(WorkspaceContract, UnhidingLeavesWindowsAloneThatNobodyHid) {
    const auto editor = this->open("Tavro-Editor", "notes");
    this->open("Tavro-Editor", "letter");
    ASSERT_TRUE(editor);
    this->rig.minimise("notes");
    ASSERT_TRUE(this->shows({"letter"}));
    editor->unhide();
    editor->hide();
    ASSERT_TRUE(this->shows({}));
    editor->unhide();
    EXPECT_TRUE(this->shows({"letter"}));
}

TYPED_TEST_P(WorkspaceContract, RequestsToAnApplicationThatHasGoneAreIgnored) {
    const auto editor = this->open("Tavro-Editor", "notes");
    const auto browser = this->open("Tavro-Browser", "page", editor);
    ASSERT_TRUE(editor && browser);
    this->rig.quit("Tavro-Browser");
    this->rig.clickWindow("notes");
    ASSERT_TRUE(this->isFrontmost(editor));
    browser->hide();
    browser->unhide();
    browser->activate(ApplicationActivationOption::ignoringOtherApps);
    EXPECT_TRUE(this->shows({"notes"}));
    EXPECT_TRUE(this->isFrontmost(editor));
    for (const auto& application : this->workspace().runningApplications())
        EXPECT_FALSE(application->isEqual(*browser));
}

REGISTER_TYPED_TEST_SUITE_P(WorkspaceContract, AnApplicationIsEqualToItselfOnly,
                            ActivationsAreToldWhenTheyAreInForce, HidingTakesAllWindowsOfOneApplication,
                            UnhidingRestoresTheStackingAndWhatTheUserHadPutAway,
                            UnhidingLeavesWindowsAloneThatNobodyHid,
                            RequestsToAnApplicationThatHasGoneAreIgnored);

} // namespace tavro
