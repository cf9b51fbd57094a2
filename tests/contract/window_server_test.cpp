#include "support/machines/TestMachine.h"

#include "platform/applications/RunningApplication.h"
#include "platform/applications/Workspace.h"
#include "platform/windows/WindowList.h"
#include "platform/windows/WindowServer.h"

namespace tavro {
namespace {

/// Windows of the machine, and the list of all windows.
class WindowServerContract : public Contract {
protected:
    using Entries = PropertyList::Array;

    WindowList& list() { return machine().windowList(); }
    static WindowSettings settings(const Screen& screen) {
        return {.contentRect = place, .styleMask = WindowStyleMask::titled, .screen = screen};
    }
    /// A window over a whole screen, one level above the desktop's icons, not ordered front yet.
    std::shared_ptr<OverlayWindow> createCover(const Screen& screen) {
        auto window = machine().windowServer().createOverlayWindow(settings(screen));
        window->setLevel(machine().windowServer().levelForKey(WindowLevelKey::desktopIcon) + 1);
        window->setStyleMask(WindowStyleMask::borderless);
        window->setAttribute(WindowAttribute::canHide, false);
        window->setAttribute(WindowAttribute::ignoresMouseEvents, true);
        window->setFrame(screen.frame, true);
        return window;
    }
    Screen firstScreen() { return machine().screens().screens().front(); }
    std::optional<Rect> shownFrame(const Window& window) { return testMachine->shownFrame(number(window)); }
    bool isShownAt(const Window& window, std::optional<Rect> frame) {
        return waitUntil([&] { return shownFrame(window) == frame; });
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
        const auto& dictionary = *entry.as<PropertyList::Dictionary>();
        return dictionary.contains(key) ? *dictionary.at(key).as<std::string>() : "";
    }
    /// The owners of the applications' windows, in the order of the list.
    static std::string owners(const Entries& entries) {
        std::string found;
        for (const auto& entry : entries)
            if (text(entry, WindowListKey::ownerName).starts_with("Tavro-"))
                found += text(entry, WindowListKey::ownerName) + " ";
        return found;
    }
    std::optional<WindowNumber> wallpaperIn(const Entries& entries) {
        const bool isNew = machine().systemVersion() >= SystemVersion{14, 0};
        for (const auto& entry : entries)
            if (text(entry, WindowListKey::ownerName) == "Dock" &&
                text(entry, WindowListKey::name).starts_with(isNew ? "Wallpaper-" : "Desktop"))
                return WindowNumber(
                    entry.as<PropertyList::Dictionary>()->at(WindowListKey::number).exactUInt32().value());
        return std::nullopt;
    }
};

TEST_F(WindowServerContract, AWindowShowsFromOrderingToClosing) {
    for (const auto& screen : machine().screens().screens()) {
        const auto cover = createCover(screen);
        EXPECT_EQ(shownFrame(*cover), std::nullopt);
        cover->orderFrontRegardless();
        cover->orderFront();
        cover->makeKeyAndOrderFront();
        EXPECT_TRUE(isShownAt(*cover, screen.frame));
        cover->close();
        EXPECT_TRUE(isShownAt(*cover, std::nullopt));
        cover->setLevel(0);
        cover->setFrame(screen.frame, true);
        cover->orderFrontRegardless();
        cover->close();
        // What the calls above might still bring about has happened when the next window is there.
        const auto next = createCover(screen);
        next->orderFrontRegardless();
        EXPECT_TRUE(isShownAt(*next, screen.frame));
        EXPECT_EQ(shownFrame(*cover), std::nullopt);
    }
}

TEST_F(WindowServerContract, ClosingReleasesTheContentAndDroppingHidesTheWindow) {
    struct EmptyView : View {};
    auto cover = createCover(firstScreen());
    auto view = std::make_shared<EmptyView>();
    const std::weak_ptr<EmptyView> content = view;
    cover->setContentView(std::move(view));
    EXPECT_FALSE(content.expired());
    cover->close();
    EXPECT_TRUE(waitUntil([&] { return content.expired(); }));
    cover = createCover(firstScreen());
    cover->orderFrontRegardless();
    ASSERT_TRUE(isShownAt(*cover, firstScreen().frame));
    const auto coverNumber = number(*cover);
    cover = nullptr;
    EXPECT_TRUE(waitUntil([&] { return !testMachine->shownFrame(coverNumber); }));
}

TEST_F(WindowServerContract, TheListHasVisibleWindowsFrontToBack) {
    testMachine->openWindow("Tavro-Editor", "notes", place);
    testMachine->openWindow("Tavro-Browser", "page", place);
    const auto lists = [&](const std::string& expected) {
        return waitUntil([&] { return owners(onScreen()) == expected; });
    };
    EXPECT_TRUE(lists("Tavro-Browser Tavro-Editor "));
    testMachine->clickWindow("notes");
    EXPECT_TRUE(lists("Tavro-Editor Tavro-Browser "));
    testMachine->minimise("notes");
    EXPECT_TRUE(lists("Tavro-Browser "));
    testMachine->quit("Tavro-Browser");
    EXPECT_TRUE(lists(""));
}

TEST_F(WindowServerContract, TheWallpaperIsBelowACoverAndCanBeCaptured) {
    testMachine->openWindow("Tavro-Editor", "notes", place);
    const auto cover = createCover(firstScreen());
    cover->orderFrontRegardless();
    ASSERT_TRUE(isShownAt(*cover, firstScreen().frame));
    EXPECT_EQ(owners(onScreen()), "Tavro-Editor ");
    const auto wallpaper = wallpaperIn(below(*cover));
    ASSERT_TRUE(wallpaper);
    EXPECT_EQ(owners(below(*cover)), "");
    const auto number = firstScreen().deviceDescription.at("NSScreenNumber").exactUInt32().value();
    const auto area = machine().screens().displayBounds(DisplayID(number));
    const auto picture = [&](const Rect& part, WindowNumber window) {
        return list().createImage(part, WindowListOption::includingWindow, window,
                                  WindowImageOption::boundsIgnoreFraming | WindowImageOption::bestResolution);
    };
    const auto image = picture(area, *wallpaper);
    ASSERT_TRUE(image && (image->pixels || image->onServer));
    EXPECT_GE(image->pixelWidth, area.size.width);
    EXPECT_NEAR(image->pixelWidth * area.size.height, image->pixelHeight * area.size.width, area.size.width);
    EXPECT_FALSE(picture(Rect{}, *wallpaper));
    EXPECT_FALSE(picture(area, WindowNumber(0xfffffff0)));
}

} // namespace
} // namespace tavro
