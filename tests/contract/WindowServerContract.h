#pragma once

#include "Rig.h"

#include "platform/WindowList.h"
#include "platform/WindowServer.h"
#include "platform/Workspace.h"

#include <algorithm>

namespace tavro {

/// Windows of the machine, and the list of all windows.
template <Rig R>
class WindowServerContract : public Contract<R> {
protected:
    using Entries = PropertyList::Array;

    WindowList& list() { return this->machine().windowList(); }
    std::shared_ptr<Window> createWindow(const Screen& screen) {
        return this->machine().windowServer().createWindow(this->place, WindowStyleMask::titled,
                                                           BackingStore::buffered, false, screen);
    }
    /// A window over a whole screen, one level above the desktop's icons, not ordered front yet.
    std::shared_ptr<Window> createCover(const Screen& screen) {
        auto window = createWindow(screen);
        window->setLevel(this->machine().windowServer().levelForKey(WindowLevelKey::desktopIcon) + 1);
        window->setCollectionBehavior(
            WindowCollectionBehavior::canJoinAllSpaces | WindowCollectionBehavior::stationary |
            WindowCollectionBehavior::ignoresCycle | WindowCollectionBehavior::fullScreenAuxiliary |
            WindowCollectionBehavior::fullScreenDisallowsTiling);
        window->setStyleMask(WindowStyleMask::borderless);
        window->setCanHide(false);
        window->setHasShadow(false);
        window->setIgnoresMouseEvents(true);
        window->setFrame(screen.frame, true);
        return window;
    }
    Screen firstScreen() { return this->machine().screens().screens().front(); }
    std::optional<Rect> shownFrame(const Window& window) { return this->rig.shownFrame(number(window)); }
    bool isShownAt(const Window& window, std::optional<Rect> frame) {
        return this->waitUntil([&] { return shownFrame(window) == frame; });
    }
    static WindowNumber number(const Window& window) {
        return WindowNumber(static_cast<std::uint32_t>(window.windowNumber()));
    }

    Entries onScreen() {
        return list().copyWindowInfo(WindowListOption::onScreenOnly, WindowNumber()).value_or(Entries{});
    }
    Entries below(const Window& window) {
        constexpr auto options = WindowListOption::onScreenOnly | WindowListOption::onScreenBelowWindow;
        return list().copyWindowInfo(options, number(window)).value_or(Entries{});
    }
    static std::string text(const PropertyList& entry, const char* key) {
        const auto* dictionary = entry.as<PropertyList::Dictionary>();
        const auto* value =
            dictionary && dictionary->contains(key) ? dictionary->at(key).as<std::string>() : nullptr;
        return value ? *value : "";
    }
    /// The owners of the entries with these names, in the order of the list.
    static std::vector<std::string> owners(const Entries& entries, const std::vector<std::string>& names) {
        std::vector<std::string> found;
        for (const auto& entry : entries)
            if (std::ranges::find(names, text(entry, WindowListKey::name)) != names.end())
                found.push_back(text(entry, WindowListKey::ownerName));
        return found;
    }
    std::optional<WindowNumber> wallpaper(const Entries& entries) {
        const bool isNew = this->machine().systemVersion() >= SystemVersion{14, 0};
        for (const auto& entry : entries)
            if (text(entry, WindowListKey::ownerName) == "Dock" &&
                text(entry, WindowListKey::name).starts_with(isNew ? "Wallpaper-" : "Desktop"))
                return WindowNumber(entry.template as<PropertyList::Dictionary>()
                                        ->at(WindowListKey::number)
                                        .exactUInt32()
                                        .value());
        return std::nullopt;
    }
    std::optional<Image> picture(Rect area, WindowNumber window) {
        return list().createImage(area, WindowListOption::includingWindow, window,
                                  WindowImageOption::boundsIgnoreFraming | WindowImageOption::bestResolution);
    }
};

TYPED_TEST_SUITE_P(WindowServerContract);

TYPED_TEST_P(WindowServerContract, NumbersArePositiveAndUniqueAndFitIn32Bits) {
    const auto screen = this->firstScreen();
    const auto first = this->createWindow(screen);
    const auto second = this->createWindow(screen);
    for (const auto& window : {first, second}) {
        ASSERT_NE(window, nullptr);
        EXPECT_GT(window->windowNumber(), 0);
        EXPECT_LE(window->windowNumber(), std::int64_t{0xffffffff});
    }
    EXPECT_NE(first->windowNumber(), second->windowNumber());
}

TYPED_TEST_P(WindowServerContract, AWindowIsOnScreenExactlyFromItsOrderingToItsClose) {
    for (const auto& screen : this->machine().screens().screens()) {
        const auto cover = this->createCover(screen);
        EXPECT_EQ(this->shownFrame(*cover), std::nullopt);
        cover->orderFrontRegardless();
        cover->orderFront();
        cover->makeKeyAndOrderFront();
        EXPECT_TRUE(this->isShownAt(*cover, screen.frame));
        cover->close();
        EXPECT_TRUE(this->isShownAt(*cover, std::nullopt));
        cover->setLevel(0);
        cover->setFrame(screen.frame, true);
        cover->orderFrontRegardless();
        cover->close();
        // What the calls above might still bring about has happened when the next window is there.
        const auto next = this->createCover(screen);
        next->orderFrontRegardless();
        EXPECT_TRUE(this->isShownAt(*next, screen.frame));
        EXPECT_EQ(this->shownFrame(*cover), std::nullopt);
    }
}

TYPED_TEST_P(WindowServerContract, CoversStandEachOnItsOwnScreen) {
    const auto screens = this->machine().screens().screens();
    std::vector<std::shared_ptr<Window>> covers;
    for (const auto& screen : screens) {
        covers.push_back(this->createCover(screen));
        covers.back()->orderFrontRegardless();
    }
    for (std::size_t index = 0; index < screens.size(); ++index)
        EXPECT_TRUE(this->isShownAt(*covers[index], screens[index].frame));
}

TYPED_TEST_P(WindowServerContract, DroppingTheLastReferenceTakesTheWindowOffTheScreen) {
    auto cover = this->createCover(this->firstScreen());
    cover->orderFrontRegardless();
    ASSERT_TRUE(this->isShownAt(*cover, this->firstScreen().frame));
    const auto number = this->number(*cover);
    cover = nullptr;
    EXPECT_TRUE(this->waitUntil([&] { return !this->rig.shownFrame(number); }));
}

TYPED_TEST_P(WindowServerContract, ClosingLetsTheContentViewGo) {
    struct EmptyView : View {};
    const auto cover = this->createCover(this->firstScreen());
    auto view = std::make_shared<EmptyView>();
    const std::weak_ptr<EmptyView> reference = view;
    cover->setContentView(std::move(view));
    EXPECT_FALSE(reference.expired());
    cover->close();
    EXPECT_TRUE(this->waitUntil([&] { return reference.expired(); }));
}

TYPED_TEST_P(WindowServerContract, ACoverStandsBelowApplicationsAndStaysWhenAllAreHidden) {
    this->rig.openWindow("Tavro-Editor", "notes", this->place);
    const auto screen = this->firstScreen();
    const auto cover = this->createCover(screen);
    cover->orderFrontRegardless();
    ASSERT_TRUE(this->isShownAt(*cover, screen.frame));
    EXPECT_EQ(this->owners(this->onScreen(), {"notes"}), std::vector<std::string>{"Tavro-Editor"});
    EXPECT_EQ(this->owners(this->below(*cover), {"notes"}), std::vector<std::string>{});
    EXPECT_TRUE(this->wallpaper(this->below(*cover)));
    for (const auto& application : this->machine().workspace().runningApplications())
        application->hide();
    ASSERT_TRUE(this->shows({}));
    EXPECT_EQ(this->shownFrame(*cover), screen.frame);
}

TYPED_TEST_P(WindowServerContract, TheListGoesFrontToBackWithoutWhatIsNotOnScreen) {
    this->rig.openWindow("Tavro-Editor", "notes", this->place);
    this->rig.openWindow("Tavro-Browser", "page", this->place);
    const auto listed = [&](const std::vector<std::string>& expected) {
        return this->waitUntil([&] { return this->owners(this->onScreen(), {"notes", "page"}) == expected; });
    };
    EXPECT_TRUE(listed({"Tavro-Browser", "Tavro-Editor"}));
    this->rig.clickWindow("notes");
    EXPECT_TRUE(listed({"Tavro-Editor", "Tavro-Browser"}));
    this->rig.minimise("notes");
    EXPECT_TRUE(listed({"Tavro-Browser"}));
    this->rig.quit("Tavro-Browser");
    EXPECT_TRUE(listed({}));
}

TYPED_TEST_P(WindowServerContract, TheWallpaperHasAPictureForADisplay) {
    const auto entries = this->onScreen();
    const auto wallpaper = this->wallpaper(entries);
    ASSERT_TRUE(wallpaper);
    const auto number = this->firstScreen().deviceDescription.at("NSScreenNumber").exactUInt32().value();
    const auto area = this->machine().screens().displayBounds(DisplayID(number));
    const auto image = this->picture(area, *wallpaper);
    ASSERT_TRUE(image);
    EXPECT_NE(image->pixels, nullptr);
    EXPECT_GE(image->pixelWidth, area.size.width);
    EXPECT_NEAR(image->pixelWidth * area.size.height, image->pixelHeight * area.size.width, area.size.width);
    EXPECT_GE(image->bytesPerRow, static_cast<std::size_t>(image->pixelWidth) * sizeof(std::uint32_t));
    EXPECT_FALSE(this->picture(Rect{}, *wallpaper));
    EXPECT_FALSE(this->picture(area, WindowNumber(0xfffffff0)));
}

REGISTER_TYPED_TEST_SUITE_P(WindowServerContract, NumbersArePositiveAndUniqueAndFitIn32Bits,
                            AWindowIsOnScreenExactlyFromItsOrderingToItsClose, CoversStandEachOnItsOwnScreen,
                            DroppingTheLastReferenceTakesTheWindowOffTheScreen, ClosingLetsTheContentViewGo,
                            ACoverStandsBelowApplicationsAndStaysWhenAllAreHidden,
                            TheListGoesFrontToBackWithoutWhatIsNotOnScreen,
                            TheWallpaperHasAPictureForADisplay);

} // namespace tavro
