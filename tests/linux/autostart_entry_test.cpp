#include "platform/linux/storage/AutostartEntry.h"

#include "support/TemporaryFolder.h"

#include <gio/gdesktopappinfo.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <memory>
#include <sys/wait.h>

namespace tavro {
namespace {

namespace fs = std::filesystem;
using Status = AppService::Status;

class AutostartEntryTest : public testing::Test {
protected:
    void write(const std::string& text) const {
        fs::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text;
    }

    TemporaryFolder folder;
    const fs::path file = folder.path() / "config" / "autostart" / "com.vantrelo.TavroPRO.desktop";
    AutostartEntry entry{file, "/usr/bin/tavropro"};
};

TEST_F(AutostartEntryTest, RegisteringTwiceIsTheSameAsOnce) {
    EXPECT_EQ(entry.status(), Status::notRegistered);
    for (const bool isRegistered : {false, true, true, false, false}) {
        EXPECT_EQ(isRegistered ? entry.registerService() : entry.unregisterService(), std::nullopt);
        EXPECT_EQ(entry.status(), isRegistered ? Status::enabled : Status::notRegistered);
        EXPECT_EQ(fs::exists(file), isRegistered);
    }
}

TEST_F(AutostartEntryTest, StatusIsReadFromTheFile) {
    const std::string start = "[Desktop Entry]\nType=Application\nName=TavroPRO\nExec=tavropro\n";
    const std::tuple<const char*, std::string, Status> cases[] = {
        {"plain", start, Status::enabled},
        {"hidden", start + "Hidden=true\n", Status::requiresApproval},
        {"hidden, with blanks", start + "Hidden = true \n", Status::requiresApproval},
        {"switched off in GNOME", start + "X-GNOME-Autostart-enabled=false\n", Status::requiresApproval},
        {"switched on in GNOME, hidden", start + "X-GNOME-Autostart-enabled=true\nHidden=true\n",
         Status::requiresApproval},
        {"switched off in MATE", start + "X-MATE-Autostart-enabled=false\n", Status::requiresApproval},
        {"hidden in another group", start + "[Desktop Action Quit]\nHidden=true\n", Status::enabled},
        {"a comment", start + "#Hidden=true\n", Status::enabled},
        {"nothing to start", "[Desktop Entry]\nType=Application\nName=TavroPRO\n", Status::notFound},
        {"a link", "[Desktop Entry]\nType=Link\nExec=tavropro\n", Status::notFound},
        {"no entry", "tavropro &\n", Status::notFound},
        {"far too large", start + std::string(1 << 20, '#'), Status::notFound},
    };
    for (const auto& [what, text, status] : cases) {
        SCOPED_TRACE(what);
        write(text);
        EXPECT_EQ(entry.status(), status);
        EXPECT_EQ(entry.registerService(), std::nullopt);
        EXPECT_EQ(entry.status(), Status::enabled);
    }
}

TEST_F(AutostartEntryTest, FileSystemErrorsAreReported) {
    fs::create_directories(file / "kept");
    EXPECT_EQ(entry.status(), Status::notFound);
    EXPECT_EQ(entry.registerService(), file.string() + ": Is a directory");
    EXPECT_EQ(entry.unregisterService(), file.string() + ": Is a directory");
    EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 1) << "a remnant is left";

    const fs::path none = "/proc/none/autostart/tavropro.desktop";
    AutostartEntry nowhere(none, "/usr/bin/tavropro");
    EXPECT_EQ(nowhere.status(), Status::notRegistered);
    EXPECT_EQ(nowhere.registerService(), none.string() + ": No such file or directory");
    EXPECT_EQ(nowhere.unregisterService(), std::nullopt);
}

// By another reader of desktop entries, and the program that it starts.
TEST_F(AutostartEntryTest, ProgramsOfAnyNameAreStarted) {
    for (const auto* name :
         {"tavropro", "with blank", "a'b", "a\"b", "back\\slash", "$HOME", "`date`", "100%", "%f", "a;b&c|d",
          "<a>(b)*?#~", "tab\tbed", "\xc3\xa4\xe2\x82\xac", "-x", "=y", " ", "line\nfeed", "\\n"}) {
        SCOPED_TRACE(name);
        const auto program = folder.path() / name;
        const auto mark = folder.path() / "mark";
        std::ofstream(program) << "#!/bin/sh\n[ $# = 0 ] && echo started >'" << mark.string() << "'\n";
        fs::permissions(program, fs::perms::owner_all);
        AutostartEntry named(file, program);
        ASSERT_EQ(named.registerService(), std::nullopt);
        EXPECT_EQ(std::system(("desktop-file-validate " + file.string()).c_str()), 0);
        const std::unique_ptr<GDesktopAppInfo, void (*)(void*)> info(
            g_desktop_app_info_new_from_filename(file.c_str()), &g_object_unref);
        ASSERT_TRUE(info);
        GPid pid = 0;
        ASSERT_TRUE(g_desktop_app_info_launch_uris_as_manager(
            info.get(), nullptr, nullptr, G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr,
            [](GDesktopAppInfo*, GPid started, gpointer data) { *static_cast<GPid*>(data) = started; }, &pid,
            nullptr));
        ASSERT_EQ(::waitpid(pid, nullptr, 0), pid);
        EXPECT_TRUE(fs::remove(mark)) << "not started";
        fs::remove(program);
    }
}

} // namespace
} // namespace tavro
