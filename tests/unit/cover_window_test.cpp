#include "support/Launch.h"

#include "desktop/CoverWindow.h"
#include "platform/simulated/windows/SimulatedOverlayWindow.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <tuple>

namespace tavro {
namespace {

constexpr Rect firstFrame{{0, 0}, {1920, 1080}};
constexpr std::uint32_t mainColor = 0xff112233;
constexpr std::uint32_t customColor = 0xff445566;
const auto onlyScreen = SimulatedScreens::screen(firstFrame, 1);
const char* const captured = "fixed ff205080 1920x1080";
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
        SimulatedImages::write(m_folder / "main.png", 4, 3, mainColor);
        SimulatedImages::write(m_folder / "custom.png", 6, 5, customColor);
        std::ofstream(m_folder / "text.png") << "not a picture";
    }

    void giveMainScreenAWallpaper(SimulatedMac& mac) {
        if (const auto screen = mac.screens().mainScreen())
            mac.workspace().setDesktopImage(*screen, m_folder / "main.png");
    }

    static PropertyList entry(PropertyList owner, PropertyList name, PropertyList number) {
        return PropertyList::Dictionary{{WindowListKey::ownerName, std::move(owner)},
                                        {WindowListKey::name, std::move(name)},
                                        {WindowListKey::number, std::move(number)}};
    }

    const TemporaryFolder m_temporary;
    const std::filesystem::path m_folder = m_temporary.path();
};

struct ClosedAtTheEnd : CoverWindow {
    using CoverWindow::CoverWindow;
    ~ClosedAtTheEnd() {
        if (window)
            window->close();
    }
};

TEST_F(CoverWindowTest, ConfiguresItsWindowInOrder) {
    SimulatedMac mac;
    Process process(mac);
    mac.journal().clear();
    const ClosedAtTheEnd cover(m_folder / "custom.png", mac.screens().screens()[1]);
    EXPECT_EQ(joined(mac.journal().lines()),
              "windowServer.createWindow 5 1440x900 at 1920,180 1 2 false; "
              "window.setLevel -2147483602; window.setCollectionBehavior 4433; window.setStyleMask 0; "
              "window.setCanHide false; window.setHasShadow false; window.setIgnoresMouseEvents true; "
              "window.setBackgroundColor 0 0 0 0.01; window.setFrame 1440x900 at 1920,180 true; "
              "window.setContentView; window.orderFrontRegardless; window.orderFront; "
              "window.makeKeyAndOrderFront");
    EXPECT_EQ(cover.displayID, DisplayID(2));
    const auto& window = static_cast<const SimulatedOverlayWindow&>(*cover.window);
    const auto view = std::dynamic_pointer_cast<const HostingView<CoverWindow>>(window.contentView());
    ASSERT_TRUE(view); // whose record shows what this one does
    EXPECT_EQ(describe(view->record.body()), "stretched ff445566 6x5");
}

TEST_F(CoverWindowTest, ShowsTheFirstSourceThatWorks) {
    using Setup = std::function<void(SimulatedMac&)>;
    const auto nothing = [](SimulatedMac&) {};
    const auto noList = [](SimulatedMac& mac) { mac.windowList().failNextList(); };
    const auto junk = [](PropertyList entry) {
        return [=](SimulatedMac& mac) { mac.windowList().addJunk(entry); };
    };
    const auto window = [](const char* owner, const char* name, int level) {
        return [=](SimulatedMac& mac) {
            mac.windowServer().add(
                {ApplicationID(99), owner, name, firstFrame, level, true, false, true, false, 0xff777777});
        };
    };
    const auto screens = [](std::vector<Screen> all) {
        return [=](SimulatedMac& mac) { mac.screens().set(all); };
    };
    const auto textAsWallpaper = [this](SimulatedMac& mac) {
        mac.windowList().failNextList();
        mac.workspace().setDesktopImage(mac.screens().screens()[0], m_folder / "text.png");
    };
    const PropertyList withoutNumber =
        PropertyList::Dictionary{{WindowListKey::ownerName, "Dock"}, {WindowListKey::name, "Wallpaper-0"}};
    constexpr int low = SimulatedWindowServer::wallpaperLevel;
    const std::tuple<const char*, const char*, Setup, const char*, int> cases[] = {
        {"custom picture", "custom.png", nothing, "stretched ff445566 6x5", 0},
        {"no custom picture", nullptr, nothing, captured, 1},
        {"custom picture is a text", "text.png", nothing, captured, 1},
        {"the window of another owner", nullptr, window("Impostor", "Wallpaper-9", low), captured, 1},
        {"another window of the Dock", nullptr, window("Dock", "Launchpad", low), captured, 1},
        {"the frontmost of several", nullptr, window("Dock", "Wallpaper-9", low), "fixed ff777777 1920x1080",
         1},
        {"one above the cover", nullptr, window("Dock", "Wallpaper-9", 0), captured, 1},
        {"no list, custom picture missing", "missing.png", noList, mainWallpaper, 1},
        {"no picture", nullptr, [](auto& mac) { mac.windowList().failNextImage(); }, mainWallpaper, 1},
        {"an entry that is no dictionary", nullptr, junk("window"), mainWallpaper, 1},
        {"a negative number", nullptr, junk(entry("Dock", "Wallpaper-0", -1)), mainWallpaper, 1},
        {"no number", nullptr, junk(withoutNumber), mainWallpaper, 1},
        {"the display is gone", nullptr, screens({SimulatedScreens::screen({{0, 0}, {800, 600}}, 7)}), failed,
         1},
        {"no screen is left", nullptr, screens({}), failed, 1},
        {"the main wallpaper is a text", nullptr, textAsWallpaper, failed, 1},
    };
    for (const auto& [what, custom, setup, expected, listCount] : cases) {
        SCOPED_TRACE(what);
        SimulatedMac mac;
        mac.screens().set({onlyScreen});
        giveMainScreenAWallpaper(mac);
        Process process(mac);
        const ClosedAtTheEnd cover(custom ? std::optional(m_folder / custom) : std::nullopt,
                                   mac.screens().screens()[0]);
        setup(mac);
        EXPECT_EQ(describe(cover.body()), expected);
        EXPECT_EQ(mac.windowList().listCount(), listCount);
    }
}

TEST_F(CoverWindowTest, TheSecondScreenFallsBackToTheMainScreensWallpaper) {
    SimulatedMac mac;
    giveMainScreenAWallpaper(mac);
    Process process(mac);
    const ClosedAtTheEnd cover(std::nullopt, mac.screens().screens()[1]);
    mac.windowList().failNextImage();
    EXPECT_EQ(describe(cover.body()), mainWallpaper);
    mac.screens().setMain(1);
    mac.windowList().failNextImage();
    EXPECT_EQ(describe(cover.body()), failed);
}

TEST_F(CoverWindowTest, SkipsTheCaptureOnAScreenWithoutANumber) {
    for (const auto& screen :
         {SimulatedScreens::screen(firstFrame), SimulatedScreens::screen(firstFrame, 1.5)}) {
        SimulatedMac mac;
        mac.screens().set({screen});
        giveMainScreenAWallpaper(mac);
        Process process(mac);
        const ClosedAtTheEnd cover(std::nullopt, screen);
        EXPECT_EQ(cover.displayID, std::nullopt);
        EXPECT_EQ(describe(cover.body()), mainWallpaper);
        EXPECT_EQ(mac.windowList().listCount(), 0);
    }
}

TEST_F(CoverWindowTest, FindsTheWallpaperWindowOfEachGeneration) {
    const std::tuple<PropertyList, PropertyList, bool, bool> cases[] = {
        {"Dock", "Wallpaper-", false, true}, {"Dock", "Wallpaper", false, false},
        {"Dock", "Desktop", true, false},    {"Dock", "A Desktop Wallpaper-1", false, false},
        {"dock", "Desktop", false, false},   {"Docker", "Wallpaper-1", false, false},
        {1, "Wallpaper-1", false, false},    {"Dock", 1, false, false},
    };
    for (const auto version : {SystemVersion{10, 15}, SystemVersion{13, 7}, SystemVersion{14, 0}}) {
        SCOPED_TRACE(version.major);
        SimulatedMac mac(version);
        mac.screens().set({onlyScreen});
        Process process(mac);
        for (const auto& [owner, name, before14, from14] : cases)
            EXPECT_EQ(CoverWindow::isWallpaperWindow(*entry(owner, name, 1).as<PropertyList::Dictionary>()),
                      version.major < 14 ? before14 : from14);
        EXPECT_FALSE(CoverWindow::isWallpaperWindow({}));
        const ClosedAtTheEnd cover(std::nullopt, mac.screens().screens()[0]);
        EXPECT_EQ(describe(cover.body()), captured);
    }
}

} // namespace
} // namespace tavro
