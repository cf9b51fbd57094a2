#include "platform/linux/storage/PlistUserDefaults.h"

#include "platform/simulated/process/SimulatedLog.h"
#include "platform/simulated/process/SimulatedMainQueue.h"
#include "support/Files.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <fstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavro {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

class PlistUserDefaultsTest : public testing::Test {
protected:
    void write(const std::string& bytes) const { ::write(file, bytes); }
    PlistUserDefaults open() { return PlistUserDefaults(file, queue, log); }
    std::size_t filesInFolder() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
    }

    TemporaryFolder temporary;
    const fs::path folder = temporary.path(), file = folder / "settings.plist";
    SimulatedMainQueue queue;
    Journal journal;
    SimulatedLog log{journal};
};

constexpr auto header = "<?xml version=\"1.0\"?><plist version=\"1.0\">";

TEST_F(PlistUserDefaultsTest, UnreadableFilesAreSetAsideAndSettingsStartAnew) {
    const std::pair<const char*, std::string> cases[] = {
        {"empty", ""},
        {"text", "hideDesktop = true\n"},
        {"truncated XML", header + "<dict><key>tavro</key><tr"s},
        {"an array on top", header + "<array><true/></array></plist>"s},
        {"too large", header + "<dict/>"s + std::string(1 << 16, ' ') + "</plist>"},
        {"binary with wild offsets", "bplist00\xd1\x01\x02Ua"s + std::string(32, '\xff')},
    };
    std::size_t setAside = 0;
    for (const auto& [name, bytes] : cases) {
        SCOPED_TRACE(name);
        write(bytes);
        auto defaults = open();
        EXPECT_EQ(log.takeDiagnosed().size(), 1u);
        EXPECT_EQ(contentsOf(file.string() + ".unreadable-" + std::to_string(++setAside)), bytes);
        EXPECT_FALSE(fs::exists(file));
        EXPECT_EQ(defaults.object("tavro"), std::nullopt);
        defaults.setObject("tavro", true);
        EXPECT_TRUE(defaults.synchronize());
        EXPECT_TRUE(open().boolForKey("tavro"));
    }
}

TEST_F(PlistUserDefaultsTest, ForeignEditsAreKeptUnlessOverwrittenLater) {
    const auto edit = [this](const std::string& entries) { write(header + entries + "</plist>"); };
    edit("<dict><key>hideApps</key><true/><key>muteSpeaker</key><true/></dict>");
    auto defaults = open();
    defaults.setObject("tavro", true);
    ASSERT_TRUE(defaults.synchronize());
    edit("<dict><key>hideApps</key><false/><key>muteSpeaker</key><true/><key>tavro</key><false/>"
         "<key>theirs</key><array><integer>18446744073709551615</integer></array></dict>");
    defaults.setObject("launched", true);
    defaults.removeObject("muteSpeaker");
    ASSERT_TRUE(defaults.synchronize());
    const auto next = open();
    EXPECT_EQ(next.object("hideApps"), PropertyList(false));
    EXPECT_EQ(next.object("tavro"), PropertyList(false));
    EXPECT_EQ(next.object("launched"), PropertyList(true));
    EXPECT_EQ(next.object("muteSpeaker"), std::nullopt);
    EXPECT_NE(contentsOf(file).find("18446744073709551615"), std::string::npos);
    EXPECT_EQ(defaults.object("hideApps"), PropertyList(true)) << "until the next launch";
    EXPECT_TRUE(log.takeDiagnosed().empty());
    write("half a fi");
    defaults.setObject("launched", false);
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_EQ(contentsOf(file.string() + ".unreadable-1"), "half a fi");
    EXPECT_EQ(open().object("hideApps"), PropertyList(true)) << "all that is known here";
    EXPECT_EQ(log.takeDiagnosed().size(), 1u);
}

TEST_F(PlistUserDefaultsTest, SymbolicLinksSurviveAndTheFileIsPrivate) {
    const auto target = folder / "dotfiles.plist";
    fs::create_symlink(target, file);
    std::ofstream(target) << header << "<dict/></plist>";
    auto defaults = open();
    defaults.setObject("tavro", true);
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_TRUE(fs::is_symlink(file));
    struct stat status {};
    ASSERT_EQ(stat(target.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0600u);
    EXPECT_EQ(filesInFolder(), 2u);
}

TEST_F(PlistUserDefaultsTest, LeftoverFilesAreRemovedAtTheNextLaunch) {
    const auto beside = [this](const std::string& ending) { return file.string() + ending; };
    const std::pair<std::string, bool> cases[] = {
        {beside(".TavroPRO-aB3xY9"), true},
        {beside(".TavroPRO-aB3xY"), false},
        {beside(".TavroPRO-aB3xY9~"), false},
        {beside(".TavroPRO-aB3x.9"), false},
        {beside(".backup"), false},
        {beside(".unreadable-1"), false},
        {folder / "a.plist.TavroPRO-aB3xY9", false},
        {beside(".TavroPRO-writer"), false},
        {beside(".TavroPRO-folder"), false},
    };
    for (const auto& [name, isRemnant] : cases)
        if (name.ends_with("folder"))
            fs::create_directory(name);
        else
            std::ofstream(name).flush();
    const int writer = ::open(beside(".TavroPRO-writer").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(writer, LOCK_EX), 0) << "by another one that runs";
    open();
    for (const auto& [name, isRemnant] : cases)
        EXPECT_EQ(fs::exists(name), !isRemnant) << name;
    ::close(writer);
}

TEST_F(PlistUserDefaultsTest, WriteErrorsAreReportedOnceAndRetried) {
    // A file in the folder's place: not even root can write below it.
    const auto blocked = folder / "blocked";
    std::ofstream(blocked).flush();
    PlistUserDefaults defaults(blocked / "settings.plist", queue, log);
    for (const bool value : {true, false}) {
        defaults.setObject("tavro", value);
        queue.runUntilIdle();
        EXPECT_FALSE(defaults.synchronize());
        EXPECT_EQ(defaults.object("tavro"), PropertyList(value));
    }
    EXPECT_EQ(log.takeDiagnosed().size(), 1u);
    fs::remove(blocked);
    EXPECT_TRUE(defaults.synchronize());
    EXPECT_TRUE(fs::exists(blocked / "settings.plist"));
}

TEST_F(PlistUserDefaultsTest, ChangesAreBatchedAndNoChangeIsNotWritten) {
    auto defaults = open();
    defaults.setObject("tavro", true);
    defaults.setObject("hideApps", true);
    EXPECT_FALSE(fs::exists(file));
    queue.runUntilIdle();
    ASSERT_TRUE(defaults.synchronize());
    ASSERT_TRUE(fs::remove(file));
    defaults.setObject("tavro", true);
    queue.runUntilIdle();
    ASSERT_TRUE(defaults.synchronize());
    EXPECT_FALSE(fs::exists(file));
}

} // namespace
} // namespace tavro
