#include "support/machines/Launch.h"

#include "desktop/CustomWallpaper.h"
#include "desktop/GeneralPreferencesView.h"

#include <cstring>
#include <filesystem>
#include <fstream>
#include <tuple>

namespace tavro {
namespace {

namespace fs = std::filesystem;

class CustomWallpaperTest : public SimulatedMacTest {
protected:
    CustomWallpaperTest() {
        for (const auto& [name, color] : {std::pair("red.jpg", 0xffaa0000), {"green.heic", 0xff00aa00}})
            SimulatedImages::write(home / name, 4, 3, static_cast<std::uint32_t>(color));
        std::ofstream(home / "text.png") << "not a picture";
        mac.journal().clear();
    }

    void choose(const std::optional<fs::path>& file) {
        page.chooseWallpaper();
        mac.openPanels().userChooses(file);
        mac.mainQueue().runUntilIdle();
        EXPECT_FALSE(mac.openPanels().shown());
    }
    std::optional<std::uint32_t> storedColor() {
        const auto image = mac.images().contentsOf(stored);
        std::uint32_t color = 0;
        if (image)
            std::memcpy(&color, image->pixels.get(), sizeof(color));
        return image ? std::optional(color) : std::nullopt;
    }

    const fs::path home = mac.fileManager().home();
    const fs::path stored = home / "Documents" / "wallpaper.png";
    Process process{mac};
    GeneralPreferencesView page;
};

TEST_F(CustomWallpaperTest, ChooserOffersOnePictureAndReturnsAtOnce) {
    page.chooseWallpaper();
    const auto shown = mac.openPanels().shown();
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->title, "Choose a Image");
    EXPECT_FALSE(shown->allowsMultipleSelection || shown->canChooseDirectories ||
                 shown->canCreateDirectories);
    EXPECT_TRUE(shown->canChooseFiles);
    EXPECT_EQ(shown->allowedFileTypes, (Lines{"png", "jpg", "jpeg", "heic"}));
}

TEST_F(CustomWallpaperTest, ChosenPictureIsStoredAndShown) {
    choose(home / "red.jpg");
    EXPECT_EQ(storedColor(), 0xffaa0000);
    EXPECT_EQ(page.selectedURL(), home / "red.jpg");
    EXPECT_EQ(customWallpaperURL(), stored);
    EXPECT_EQ(
        joined(mac.journal().lines()),
        "openPanel.begin Choose a Image; openPanel.close; fileManager.writeAtomically wallpaper.png 47; "
        "log.print File saved; userDefaults.setObject wallpaperFile true");
    EXPECT_EQ(GeneralPreferencesView().selectedURL(), stored);

    page.chooseWallpaper();
    mac.openPanels().userCancels();
    EXPECT_EQ(page.selectedURL(), home / "red.jpg");
}

TEST_F(CustomWallpaperTest, FailedStoringIsLoggedAndKeepsThePreviousPicture) {
    const auto noFault = [] {};
    const auto noDocuments = [this] { mac.fileManager().hasNoDocuments = true; };
    const auto noEncoding = [this] { mac.images().failsToEncode = true; };
    const auto fullDisk = [this] { mac.fileManager().writeError = "No space"; };
    // The file, what fails, what is said, and whether the page shows it and the flag is set.
    const std::tuple<std::optional<const char*>, std::function<void()>, Lines, bool> cases[] = {
        {"text.png", noFault, {"Not an image: " + (home / "text.png").string()}, false},
        {{}, noFault, {"Not an image: "}, false},
        {"red.jpg", noDocuments, {"There is no folder for documents"}, false},
        {"red.jpg", noEncoding, {}, true},
        {"red.jpg", fullDisk, {"No space"}, true},
    };
    for (const auto& [file, fault, log, isShown] : cases) {
        SCOPED_TRACE(testing::PrintToString(log));
        mac.fileManager().hasNoDocuments = mac.images().failsToEncode = false;
        mac.fileManager().writeError.reset();
        choose(home / "green.heic");
        mac.userDefaults().setObject("wallpaperFile", false);
        const auto lineCount = mac.log().printed().size();
        fault();
        choose(file ? std::optional(home / *file) : std::nullopt);
        EXPECT_EQ(Lines(mac.log().printed().begin() + static_cast<std::ptrdiff_t>(lineCount),
                        mac.log().printed().end()),
                  log);
        EXPECT_EQ(page.selectedURL(), home / (isShown ? *file : "green.heic"));
        EXPECT_EQ(mac.userDefaults().boolForKey("wallpaperFile"), isShown);
        EXPECT_EQ(storedColor(), 0xff00aa00);
    }
}

TEST_F(CustomWallpaperTest, APictureOfTheUsersOwnIsSetAsideOnce) {
    const auto documents = stored.parent_path();
    fs::create_directory(documents);
    for (const auto* name : {"wallpaper.png", "wallpaper-1.png"})
        std::ofstream(documents / name) << "mine";
    mac.fileManager().writeError = "No rights";
    choose(home / "red.jpg");
    EXPECT_EQ(mac.log().printed(), Lines{"No rights"});
    EXPECT_EQ(page.selectedURL(), std::nullopt);
    EXPECT_EQ(fs::file_size(stored), 4u);

    mac.fileManager().writeError.reset();
    choose(home / "red.jpg");
    EXPECT_EQ(storedColor(), 0xffaa0000);
    page.removeWallpaper();
    choose(home / "green.heic");
    EXPECT_EQ(storedColor(), 0xff00aa00) << "in place of our own";
    EXPECT_EQ(fs::file_size(documents / "wallpaper-2.png"), 4u);
    EXPECT_EQ(std::distance(fs::directory_iterator(documents), {}), 3);
    EXPECT_EQ(mac.log().printed(),
              (Lines{"No rights", stored.string() + " was there already; it is now called wallpaper-2.png",
                     "File saved", "File saved"}));
}

TEST_F(CustomWallpaperTest, TheLastDecisionHoldsHoweverLongAPictureTakes) {
    using namespace std::chrono_literals;
    mac.images().timeForEach = 1s;
    choose(home / "red.jpg");
    mac.mainQueue().advance(1s);
    page.chooseWallpaper();
    // When the file has just been written, and nobody has heard of that yet.
    mac.mainQueue().asyncAfter(1s, [&] { mac.openPanels().userChooses(home / "green.heic"); });
    mac.mainQueue().advance(1s);
    EXPECT_EQ(storedColor(), 0xffaa0000);
    mac.mainQueue().advance(9s);
    EXPECT_EQ(page.selectedURL(), home / "green.heic");
    EXPECT_EQ(std::distance(fs::directory_iterator(stored.parent_path()), {}), 1) << "in its place";
    EXPECT_EQ(storedColor(), 0xff00aa00);
    choose(home / "red.jpg");
    choose(home / "green.heic");
    GeneralPreferencesView().removeWallpaper(); // on a page that was opened meanwhile
    mac.mainQueue().advance(9s);
    EXPECT_EQ(customWallpaperURL(), std::nullopt);
    EXPECT_EQ(storedColor(), 0xff00aa00);
}

TEST_F(CustomWallpaperTest, CoversShowItAsSoonAsItHasBeenRead) {
    auto& covers = HideDesktop::shared().managedWindows;
    const auto coverDesktop = [&] {
        HideDesktop::shared().removeCovers();
        HideDesktop::shared().coverScreens(true);
    };
    const auto contents = [&] { return mac.journal().lines("window.setContentView").size(); };
    const auto showsPicture = [&] { return std::holds_alternative<StretchedImage>(covers.front().body()); };
    choose(home / "red.jpg");
    coverDesktop();
    EXPECT_TRUE(showsPicture()) << "since it was chosen";
    PreparedWallpaper::shared().forget(); // as after a launch, of which this is the first moment
    coverDesktop();
    EXPECT_FALSE(showsPicture());
    const auto before = contents();
    mac.mainQueue().runUntilIdle();
    EXPECT_TRUE(showsPicture());
    EXPECT_EQ(contents(), before + covers.size()) << "and is drawn";
    coverDesktop();
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(contents(), before + 2 * covers.size()) << "once, where nothing has changed";
    SimulatedImages::write(stored, 4, 3, 0xff0000aa);
    coverDesktop();
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(contents(), before + 4 * covers.size());
    page.removeWallpaper();
    EXPECT_EQ(PreparedWallpaper::shared().image(stored), std::nullopt);
}

TEST_F(CustomWallpaperTest, RemovingKeepsTheFile) {
    choose(home / "red.jpg");
    std::optional<fs::path> seen;
    const auto observation = page.willChange([&] { seen = page.selectedURL(); });
    const auto copy = page;
    page.removeWallpaper();
    EXPECT_EQ(seen, home / "red.jpg");
    EXPECT_EQ(copy.selectedURL(), std::nullopt);
    EXPECT_TRUE(fs::exists(stored));
    EXPECT_EQ(GeneralPreferencesView().selectedURL(), std::nullopt);
}

TEST_F(CustomWallpaperTest, CoversShowItWhenChosenInUseAndPresent) {
    const auto coveredWith = [](std::optional<bool> choice) {
        HideDesktop::shared().coverScreens(choice);
        auto path = HideDesktop::shared().managedWindows.back().wallpaperPath;
        HideDesktop::shared().removeCovers();
        return path;
    };
    choose(home / "red.jpg");
    EXPECT_EQ(coveredWith(true), stored);
    EXPECT_EQ(coveredWith(false), std::nullopt);
    EXPECT_EQ(coveredWith(std::nullopt), std::nullopt);
    page.removeWallpaper();
    EXPECT_EQ(coveredWith(true), std::nullopt);
    choose(home / "red.jpg");
    fs::remove(stored);
    EXPECT_EQ(coveredWith(true), std::nullopt);
}

} // namespace
} // namespace tavro
