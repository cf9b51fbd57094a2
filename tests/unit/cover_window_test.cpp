#include "support/TemporaryFolder.h"
#include "support/machines/Launch.h"

#include "desktop/CoverWindow.h"
#include "desktop/CustomWallpaper.h"
#include "platform/simulated/windows/SimulatedOverlayWindow.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <tuple>

namespace tavro {
namespace {

constexpr Rect firstFrame{{0, 0}, {1920, 1080}};
const auto onlyScreen = SimulatedScreens::screen(firstFrame, 1);
const char* const custom = "stretched ff445566 6x5";
const char* const captured = "fixed ff205080 1920x1080";
const char* const frontmost = "fixed ff777777 1920x1080";
const char* const mainWallpaper = "stretched ff112233 4x3";
const char* const failed = "Error loading image";

/// The kind of the content, the colour of its first pixel and its size.
std::string describe(const CoverContent& content) {
    if (const auto* text = std::get_if<CenteredText>(&content))
        return text->text;
    const auto* stretched = std::get_if<StretchedImage>(&content);
    const auto& image = stretched ? stretched->image : std::get<FixedImage>(content).image;
    std::uint32_t color = 0;
    std::memcpy(&color, image.pixels.get(), sizeof(color));
    char text[64];
    std::snprintf(text, sizeof(text), "%s %08x %gx%g", stretched ? "stretched" : "fixed", color,
                  image.size.width, image.size.height);
    return text;
}

class CoverWindowTest : public testing::Test {
protected:
    CoverWindowTest() {
        SimulatedImages::write(folder / "main.png", 4, 3, 0xff112233);
        SimulatedImages::write(folder / "custom.png", 6, 5, 0xff445566);
        std::ofstream(folder / "text.png") << "not a picture";
    }

    static PropertyList entry(PropertyList owner, PropertyList name) {
        return PropertyList::Dictionary{{WindowListKey::ownerName, std::move(owner)},
                                        {WindowListKey::name, std::move(name)}};
    }

    const TemporaryFolder temporary;
    const std::filesystem::path folder = temporary.path();
};

/// A machine whose first screen has a wallpaper, with a cover on its last one.
class Covered {
public:
    explicit Covered(const std::filesystem::path& wallpaper, std::vector<Screen> screens = {onlyScreen},
                     std::optional<std::filesystem::path> custom = {}, SystemVersion version = {14, 0})
        : mac(version) {
        mac.screens().set(screens);
        mac.workspace().setDesktopImage(screens.front(), wallpaper);
        if (custom)
            PreparedWallpaper::shared().prepare(*custom);
        mac.mainQueue().runUntilIdle();
        cover.emplace(std::move(custom), screens.back());
    }
    ~Covered() { cover->window->close(); } // which holds the cover
    std::string shown() const { return describe(cover->body()); }

    SimulatedMac mac;
    Process process{mac};
    std::optional<CoverWindow> cover;
};

TEST_F(CoverWindowTest, ConfiguresItsWindowInOrder) {
    Covered machine("", {SimulatedScreens::screen({{1920, 180}, {1440, 900}}, 2)}, folder / "custom.png");
    EXPECT_EQ(joined(machine.mac.journal().lines("window")),
              "windowServer.createWindow 7 1440x900 at 1920,180 1 2 false; "
              "window.setLevel -2147483602; window.setCollectionBehavior 4433; window.setStyleMask 0; "
              "window.setCanHide false; window.setHasShadow false; window.setIgnoresMouseEvents true; "
              "window.setBackgroundColor 0 0 0 0.01; window.setFrame 1440x900 at 1920,180 true; "
              "window.setContentView; window.orderFrontRegardless; window.orderFront; "
              "window.makeKeyAndOrderFront");
    EXPECT_EQ(machine.cover->displayID, DisplayID(2));
    const auto& window = static_cast<const SimulatedOverlayWindow&>(*machine.cover->window);
    const auto view = std::dynamic_pointer_cast<const HostingView<CoverWindow>>(window.contentView());
    ASSERT_TRUE(view);
    EXPECT_EQ(describe(view->record.body()), custom);
}

TEST_F(CoverWindowTest, ShowsTheFirstSourceThatWorks) {
    using Setup = std::function<void(SimulatedMac&)>;
    const auto nothing = [](SimulatedMac&) {};
    const auto junk = [](const PropertyList& entry) {
        return [=](SimulatedMac& mac) { mac.windowList().addJunk(entry); };
    };
    const auto window = [](int level) {
        return [=](SimulatedMac& mac) {
            mac.windowServer().add({ApplicationID(99), "Dock", "Wallpaper-9", firstFrame, level, true, false,
                                    true, false, 0xff777777});
        };
    };
    const auto screens = [](const std::vector<Screen>& all) {
        return [=](SimulatedMac& mac) { mac.screens().set(all); };
    };
    const auto noList = [](SimulatedMac& mac) { mac.windowList().failNextList(); };
    const auto textAsWallpaper = [this](SimulatedMac& mac) {
        mac.windowList().failNextList();
        mac.workspace().setDesktopImage(onlyScreen, folder / "text.png");
    };
    const std::tuple<const char*, const char*, Setup, const char*> cases[] = {
        {"custom picture", "custom.png", nothing, custom},
        {"custom picture is a text", "text.png", nothing, captured},
        {"the frontmost of several", {}, window(SimulatedWindowServer::wallpaperLevel), frontmost},
        {"one above the cover", {}, window(0), captured},
        {"no list, custom picture missing", "missing.png", noList, mainWallpaper},
        {"no picture", {}, [](auto& mac) { mac.windowList().failNextImage(); }, mainWallpaper},
        {"an entry that is no dictionary", {}, junk("window"), mainWallpaper},
        {"no number", {}, junk(entry("Dock", "Wallpaper-0")), mainWallpaper},
        {"the display is gone", {}, screens({SimulatedScreens::screen({{0, 0}, {800, 600}}, 7)}), failed},
        {"no screen is left", {}, screens({}), failed},
        {"the main wallpaper is a text", {}, textAsWallpaper, failed},
    };
    for (const auto& [what, picture, setup, expected] : cases) {
        SCOPED_TRACE(what);
        Covered machine(folder / "main.png", {onlyScreen},
                        picture ? std::optional(folder / picture) : std::nullopt);
        setup(machine.mac);
        EXPECT_EQ(machine.shown(), expected);
    }
}

TEST_F(CoverWindowTest, TheSecondScreenFallsBackToTheMainScreensWallpaper) {
    Covered machine(folder / "main.png",
                    {onlyScreen, SimulatedScreens::screen({{1920, 180}, {1440, 900}}, 2)});
    machine.mac.windowList().failNextImage();
    EXPECT_EQ(machine.shown(), mainWallpaper);
    machine.mac.screens().setMain(1);
    machine.mac.windowList().failNextImage();
    EXPECT_EQ(machine.shown(), failed);
}

TEST_F(CoverWindowTest, SkipsTheCaptureOnAScreenWithoutANumber) {
    for (const auto& screen :
         {SimulatedScreens::screen(firstFrame), SimulatedScreens::screen(firstFrame, 1.5)}) {
        Covered machine(folder / "main.png", {screen});
        EXPECT_EQ(machine.cover->displayID, std::nullopt);
        EXPECT_EQ(machine.shown(), mainWallpaper);
        EXPECT_EQ(machine.mac.windowList().listCount(), 0);
    }
}

TEST_F(CoverWindowTest, FindsTheWallpaperWindowOfEachGeneration) {
    const std::tuple<PropertyList, PropertyList, bool, bool> cases[] = {
        {"Dock", "Wallpaper-", false, true}, {"Dock", "Wallpaper", false, false},
        {"Dock", "Desktop", true, false},    {"Dock", "A Desktop Wallpaper-1", false, false},
        {"Docker", "Desktop", false, false}, {"Docker", "Wallpaper-1", false, false},
        {1, "Wallpaper-1", false, false},    {"Dock", 1, false, false},
    };
    for (const bool isOld : {true, false}) {
        Covered machine("", {onlyScreen}, {}, isOld ? SystemVersion{13, 7} : SystemVersion{14, 0});
        for (const auto& [owner, name, before14, from14] : cases)
            EXPECT_EQ(CoverWindow::isWallpaperWindow(*entry(owner, name).as<PropertyList::Dictionary>()),
                      isOld ? before14 : from14);
        EXPECT_FALSE(CoverWindow::isWallpaperWindow({}));
        EXPECT_EQ(machine.shown(), captured);
    }
}

TEST_F(SimulatedMacTest, CoversStayOnTheirScreensUntilRemoved) {
    const auto coverCount = [this] {
        return std::ranges::count(mac.windowServer().windows(), ApplicationID::self, &ServerWindow::owner);
    };
    Process process{mac};
    auto& hideDesktop = HideDesktop::shared();
    hideDesktop.coverScreens(true);
    EXPECT_EQ(hideDesktop.managedWindows.back().displayID, DisplayID(2));
    const std::weak_ptr<Window> first = hideDesktop.managedWindows.front().window;
    mac.screens().set({SimulatedScreens::screen({{0, 0}, {800, 600}}, 3)});
    hideDesktop.coverScreens(std::nullopt); // once more, which stacks
    EXPECT_EQ(hideDesktop.changeWallpaper, std::nullopt);
    EXPECT_EQ(coverCount(), 3);
    EXPECT_EQ(mac.windowServer().find(*hideDesktop.managedWindows.front().windowNumber)->frame,
              (Rect{{0, 0}, {1920, 1080}}));
    hideDesktop.removeCovers();
    EXPECT_TRUE(hideDesktop.managedWindows.empty());
    EXPECT_EQ(coverCount(), 0);
    EXPECT_TRUE(first.expired());
}

} // namespace
} // namespace tavro
