#include "support/Launch.h"

#include "desktop/CustomWallpaper.h"
#include "desktop/GeneralPreferencesView.h"

#include <gtest/gtest.h>

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
        EXPECT_FALSE(mac.openPanels().shown());
    }
    std::optional<std::uint32_t> storedColor() {
        const auto image = mac.images().contentsOf(stored);
        std::uint32_t color = 0;
        if (image)
            std::memcpy(&color, image->pixels.get(), sizeof(color));
        return image ? std::optional(color) : std::nullopt;
    }
    bool flag() { return mac.userDefaults().boolForKey("wallpaperFile"); }

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
    EXPECT_EQ(mac.log().printed(), Lines{});
}

TEST_F(CustomWallpaperTest, ChosenPictureIsStoredAndShown) {
    for (const auto& [name, color] : {std::pair("red.jpg", 0xffaa0000), {"green.heic", 0xff00aa00}}) {
        SCOPED_TRACE(name);
        mac.journal().clear();
        const auto before = fs::last_write_time(home / name);
        choose(home / name);
        EXPECT_EQ(storedColor(), color);
        EXPECT_EQ(fs::last_write_time(home / name), before);
        EXPECT_EQ(page.selectedURL(), home / name);
        EXPECT_EQ(customWallpaperURL(), stored);
        EXPECT_EQ(mac.journal().lines(), (Lines{
                                             "openPanel.begin Choose a Image",
                                             "fileManager.writeAtomically wallpaper.png 47",
                                             "log.print File saved",
                                             "userDefaults.setObject wallpaperFile true",
                                             "openPanel.close",
                                         }));
    }
    EXPECT_EQ(GeneralPreferencesView().selectedURL(), stored);
}

TEST_F(CustomWallpaperTest, FailureToStoreIsLoggedAndChangesLittle) {
    const auto noFault = [] {};
    const auto noDocuments = [this] { mac.fileManager().hasNoDocuments = true; };
    const auto noEncoding = [this] { mac.images().failsToEncode = true; };
    const auto fullDisk = [this] { mac.fileManager().writeError = "No space"; };
    const auto notAnImage = [this](const std::string& file) {
        return Lines{"Not an image: " + (home / file).string()};
    };
    // What, the file, what fails, what is said, and whether the page shows it and the flag is set.
    const std::tuple<const char*, std::optional<const char*>, std::function<void()>, Lines, bool> cases[] = {
        {"a text", "text.png", noFault, notAnImage("text.png"), false},
        {"no file", {}, noFault, {"Not an image: "}, false},
        {"no Documents", "red.jpg", noDocuments, {"There is no folder for documents"}, false},
        {"no encoding", "red.jpg", noEncoding, {}, true},
        {"a full disk", "red.jpg", fullDisk, {"No space"}, true},
    };
    for (const bool hadOne : {false, true})
        for (const auto& [what, file, fault, log, isShown] : cases) {
            SCOPED_TRACE(std::string(what) + (hadOne ? ", after another choice" : ""));
            mac.fileManager().hasNoDocuments = mac.images().failsToEncode = false;
            mac.fileManager().writeError.reset();
            page.removeWallpaper();
            fs::remove(stored);
            if (hadOne)
                choose(home / "green.heic");
            const auto urlBefore = page.selectedURL();
            const auto lineCount = mac.log().printed().size();
            fault();
            choose(file ? std::optional(home / *file) : std::nullopt);
            EXPECT_EQ(Lines(mac.log().printed().begin() + static_cast<std::ptrdiff_t>(lineCount),
                            mac.log().printed().end()),
                      log);
            EXPECT_EQ(page.selectedURL(), isShown ? home / *file : urlBefore);
            EXPECT_EQ(flag(), isShown || hadOne);
            EXPECT_EQ(storedColor(), hadOne ? std::optional(0xff00aa00) : std::nullopt);
            EXPECT_EQ(customWallpaperURL(), hadOne ? std::optional(stored) : std::nullopt);
        }
}

TEST_F(CustomWallpaperTest, CancellingChangesNothing) {
    choose(home / "red.jpg");
    page.chooseWallpaper();
    mac.journal().clear();
    mac.openPanels().userCancels();
    EXPECT_EQ(mac.journal().lines(), Lines{"openPanel.close"});
    EXPECT_EQ(page.selectedURL(), home / "red.jpg");
}

TEST_F(CustomWallpaperTest, RemovingKeepsTheFile) {
    choose(home / "red.jpg");
    std::string seen;
    const auto observation =
        page.willChange([&] { seen = page.selectedURL() ? "told before" : "told after"; });
    const auto copy = page;
    page.removeWallpaper();
    EXPECT_EQ(seen, "told before");
    EXPECT_EQ(copy.selectedURL(), std::nullopt);
    EXPECT_FALSE(flag());
    EXPECT_TRUE(fs::exists(stored));
    EXPECT_EQ(customWallpaperURL(), std::nullopt);
    EXPECT_EQ(GeneralPreferencesView().selectedURL(), std::nullopt);
    choose(home / "green.heic");
    EXPECT_EQ(storedColor(), 0xff00aa00);
}

TEST_F(CustomWallpaperTest, CoversShowItWhenChosenInUseAndPresent) {
    choose(home / "red.jpg");
    const auto coveredWith = [](std::optional<bool> choice) {
        HideDesktop::shared().coverScreens(choice);
        const auto path = HideDesktop::shared().managedWindows.back().wallpaperPath;
        HideDesktop::shared().removeCovers();
        return path;
    };
    EXPECT_EQ(coveredWith(true), stored);
    EXPECT_EQ(coveredWith(false), std::nullopt);
    EXPECT_EQ(coveredWith(std::nullopt), std::nullopt);
    mac.userDefaults().setObject("wallpaperFile", false);
    EXPECT_EQ(coveredWith(true), std::nullopt);
    mac.userDefaults().setObject("wallpaperFile", true);
    fs::remove(stored);
    EXPECT_EQ(coveredWith(true), std::nullopt);
}

} // namespace
} // namespace tavro
