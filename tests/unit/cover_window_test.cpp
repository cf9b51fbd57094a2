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

TEST_F(CoverWindowTest, ConstructionConfiguresTheWindowInThisOrder) {
    SimulatedMac mac;
    Process process(mac);
    mac.journal().clear();
    const ClosedAtTheEnd cover(m_folder / "custom.png", mac.screens().screens()[1]);
    EXPECT_EQ(mac.journal().lines(), (Lines{
                                         "windowServer.createWindow 5 1440x900 at 1920,180 1 2 false",
                                         "window.setLevel -2147483602",
                                         "window.setCollectionBehavior 4433",
                                         "window.setStyleMask 0",
                                         "window.setCanHide false",
                                         "window.setHasShadow false",
                                         "window.setIgnoresMouseEvents true",
                                         "window.setBackgroundColor 0 0 0 0.01",
                                         "window.setFrame 1440x900 at 1920,180 true",
                                         "window.setContentView",
                                         "window.orderFrontRegardless",
                                         "window.orderFront",
                                         "window.makeKeyAndOrderFront",
                                     }));
    const auto& window = static_cast<const SimulatedOverlayWindow&>(*cover.window);
    const auto view = std::dynamic_pointer_cast<const HostingView<CoverWindow>>(window.contentView());
    ASSERT_NE(view, nullptr);
    const CoverWindow& made = cover;
    for (const auto* record : {&made, &view->record}) {
        EXPECT_EQ(record->window, cover.window);
        EXPECT_EQ(record->displayFrame, (Rect{{1920, 180}, {1440, 900}}));
        EXPECT_EQ(record->wallpaperPath, m_folder / "custom.png");
        EXPECT_EQ(record->displayID, DisplayID(2));
        EXPECT_EQ(record->windowNumber, WindowNumber(5));
    }
}

TEST_F(CoverWindowTest, ContentIsTheFirstSourceThatWorks) {
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
    const PropertyList::Dictionary withoutNumber{{WindowListKey::ownerName, "Dock"},
                                                 {WindowListKey::name, "Wallpaper-0"}};
    constexpr int low = SimulatedWindowServer::wallpaperLevel;
    const struct {
        const char* what;
        const char* custom;
        Setup setup;
        const char* expected;
        int listCount;
    } cases[] = {
        {"custom picture", "custom.png", nothing, "stretched ff445566 6x5", 0},
        {"no custom picture", nullptr, nothing, captured, 1},
        {"custom picture missing", "missing.png", nothing, captured, 1},
        {"custom picture is a text", "text.png", nothing, captured, 1},
        {"the window of another owner", nullptr, window("Impostor", "Wallpaper-9", low), captured, 1},
        {"another window of the Dock", nullptr, window("Dock", "Launchpad", low), captured, 1},
        {"the frontmost of several", nullptr, window("Dock", "Wallpaper-9", low), "fixed ff777777 1920x1080",
         1},
        {"one above the cover", nullptr, window("Dock", "Wallpaper-9", 0), captured, 1},
        {"no list", nullptr, noList, mainWallpaper, 1},
        {"no list, custom picture missing", "missing.png", noList, mainWallpaper, 1},
        {"no picture", nullptr, [](auto& mac) { mac.windowList().failNextImage(); }, mainWallpaper, 1},
        {"an entry that is no dictionary", nullptr, junk("window"), mainWallpaper, 1},
        {"a number that is a text", nullptr, junk(entry("Dock", "Wallpaper-0", "1")), mainWallpaper, 1},
        {"a negative number", nullptr, junk(entry("Dock", "Wallpaper-0", -1)), mainWallpaper, 1},
        {"no number", nullptr, junk(withoutNumber), mainWallpaper, 1},
        {"the number of no window", nullptr, junk(entry("Dock", "Wallpaper-0", 4000)), mainWallpaper, 1},
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

TEST_F(CoverWindowTest, ScreensWithoutAUsableNumberSkipTheCapture) {
    const struct {
        const char* what;
        Screen screen;
        std::optional<DisplayID> displayID;
    } cases[] = {
        {"integer", SimulatedScreens::screen(firstFrame, 1), DisplayID(1)},
        {"whole real", SimulatedScreens::screen(firstFrame, 1.0), DisplayID(1)},
        {"none", SimulatedScreens::screen(firstFrame), std::nullopt},
        {"negative", SimulatedScreens::screen(firstFrame, -1), std::nullopt},
        {"fraction", SimulatedScreens::screen(firstFrame, 1.5), std::nullopt},
        {"2^32", SimulatedScreens::screen(firstFrame, std::int64_t{1} << 32), std::nullopt},
        {"text", SimulatedScreens::screen(firstFrame, "1"), std::nullopt},
    };
    for (const auto& [what, screen, displayID] : cases) {
        SCOPED_TRACE(what);
        SimulatedMac mac;
        mac.screens().set({screen});
        giveMainScreenAWallpaper(mac);
        Process process(mac);
        const ClosedAtTheEnd cover(std::nullopt, screen);
        EXPECT_EQ(cover.displayID, displayID);
        EXPECT_EQ(describe(cover.body()), displayID ? captured : mainWallpaper);
        EXPECT_EQ(mac.windowServer().find(*cover.windowNumber)->frame, firstFrame);
    }
}

TEST_F(CoverWindowTest, ARefusedWindowLeavesARecordThatStillHasContent) {
    SimulatedMac mac;
    giveMainScreenAWallpaper(mac);
    Process process(mac);
    mac.windowServer().failNextWindow();
    const ClosedAtTheEnd cover(std::nullopt, mac.screens().screens()[0]);
    EXPECT_EQ(cover.window, nullptr);
    EXPECT_EQ(cover.windowNumber, std::nullopt);
    EXPECT_EQ(describe(cover.body()), mainWallpaper);
}

TEST_F(CoverWindowTest, EachGenerationNamesItsWallpaperWindow) {
    const PropertyList::Dictionary noOwner{{WindowListKey::name, "Wallpaper-1"}};
    const PropertyList::Dictionary noName{{WindowListKey::ownerName, "Dock"}};
    const auto of = [](PropertyList owner, PropertyList name) {
        return *entry(std::move(owner), std::move(name), 1).as<PropertyList::Dictionary>();
    };
    const struct {
        const char* what;
        PropertyList::Dictionary entry;
        bool before14;
        bool from14;
    } cases[] = {
        {"new name", of("Dock", "Wallpaper-1"), false, true},
        {"new name, bare", of("Dock", "Wallpaper-"), false, true},
        {"new name, cut short", of("Dock", "Wallpaper"), false, false},
        {"old name", of("Dock", "Desktop Picture - Harbour"), true, false},
        {"old name, bare", of("Dock", "Desktop"), true, false},
        {"in the middle", of("Dock", "A Desktop Wallpaper-1"), false, false},
        {"other owner, old name", of("dock", "Desktop"), false, false},
        {"other owner, new name", of("Docker", "Wallpaper-1"), false, false},
        {"owner is no text", of(1, "Wallpaper-1"), false, false},
        {"name is no text", of("Dock", 1), false, false},
        {"no owner", noOwner, false, false},
        {"no name", noName, false, false},
    };
    for (const auto version : {SystemVersion{10, 15}, SystemVersion{11, 0}, SystemVersion{13, 7},
                               SystemVersion{14, 0}, SystemVersion{14, 6}}) {
        SCOPED_TRACE(testing::Message() << version.major << '.' << version.minor);
        SimulatedMac mac(version);
        mac.screens().set({onlyScreen});
        Process process(mac);
        for (const auto& [what, entry, before14, from14] : cases) {
            SCOPED_TRACE(what);
            EXPECT_EQ(CoverWindow::isWallpaperWindow(entry), version.major < 14 ? before14 : from14);
        }
        const ClosedAtTheEnd cover(std::nullopt, mac.screens().screens()[0]);
        EXPECT_EQ(describe(cover.body()), captured);
    }
}

} // namespace
} // namespace tavro
