#include "platform/linux/storage/XdgFileManager.h"

#include "support/Files.h"
#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"
#include "support/machines/ProcessEvents.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <sys/resource.h>

namespace tavro {
namespace {

namespace fs = std::filesystem;

class XdgFileManagerTest : public testing::Test {
protected:
    XdgFileManagerTest() {
        ::setenv("HOME", home.c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", (home / "config").c_str(), 1);
        fs::create_directories(home / "config");
    }

    int count = 0;
    QCoreApplication application{count, nullptr};
    TemporaryFolder folder;
    const fs::path home = folder.path();
    XdgFileManager files;
};

TEST_F(XdgFileManagerTest, TheDocumentsFolderComesFromUserDirsAndIsMade) {
    const std::tuple<const char*, const char*, fs::path> cases[] = {
        {"below the home folder", "XDG_DOCUMENTS_DIR=\"$HOME/My papers/here\"\n", home / "My papers/here"},
        {"elsewhere", "# mine\nXDG_DESKTOP_DIR=\"$HOME/D\"\nXDG_DOCUMENTS_DIR=\"/tmp\"\n", "/tmp"},
        {"not named", "XDG_DESKTOP_DIR=\"$HOME/D\"\n", home / "Documents"},
        {"no list", "\xff\xfe\n\n=", home / "Documents"},
    };
    for (const auto& [what, text, documents] : cases) {
        SCOPED_TRACE(what);
        std::ofstream(home / "config" / "user-dirs.dirs") << text;
        EXPECT_EQ(files.documentsFolder(), documents);
        EXPECT_EQ(files.existingDocumentsFolder(), documents);
        EXPECT_TRUE(fs::is_directory(documents));
    }
    std::ofstream(home / "a file") << "text";
    for (const auto* folder : {"/proc/none", "$HOME/a file"}) {
        std::ofstream(home / "config" / "user-dirs.dirs") << "XDG_DOCUMENTS_DIR=\"" << folder << "\"\n";
        EXPECT_EQ(files.existingDocumentsFolder(), std::nullopt);
    }
}

TEST_F(XdgFileManagerTest, WriteErrorsAreReportedAndChangeNothing) {
    const auto file = home / "wallpaper.png";
    const auto write = [this](const fs::path& to, const std::string& bytes) {
        std::optional<std::optional<std::string>> answer;
        files.writeAtomically(to, bytes, [&](const auto& error) { answer = error; });
        EXPECT_TRUE(waitUntil([&] { return answer.has_value(); }, &processEvents));
        return answer.value_or("no answer");
    };
    ASSERT_EQ(write(file, "old"), std::nullopt);
    ::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit nothing{1, before.rlim_max}; // as on a full disk
    ::setrlimit(RLIMIT_FSIZE, &nothing);
    const auto error = write(file, "new");
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(error, file.string() + " cannot be written: File too large");
    EXPECT_EQ(contentsOf(file), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(home), {}), 2) << "a remnant is left";
    EXPECT_TRUE(write("/proc/none/wallpaper.png", "new"));
    EXPECT_TRUE(write(home / "config", "new"));
    EXPECT_EQ(files.rename(home / "none.png", "other.png"),
              (home / "none.png").string() + " cannot be renamed: No such file or directory");
    EXPECT_EQ(files.rename(file, "other.png"), std::nullopt);
    EXPECT_EQ(contentsOf(home / "other.png"), "old");
}

} // namespace
} // namespace tavro
