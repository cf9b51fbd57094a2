#include "platform/input/HotKeyCenter.h"
#include "platform/linux/bus/BoundedBus.h"
#include "platform/linux/bus/GSettings.h"
#include "platform/linux/desktops/RunningDesktop.h"

#include "support/TemporaryFolder.h"
#include "support/servers/BusStandIn.h"
#include "support/servers/PrivateBus.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace tavro {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

// Stand-ins of schemas: as documented, with a few of their keys.
constexpr auto schemas = R"(<schemalist>
<schema id="org.gnome.desktop.interface" path="/org/gnome/desktop/interface/">
  <key name="color-scheme" type="s"><default>'default'</default></key></schema>
<schema id="org.gnome.desktop.background" path="/org/gnome/desktop/background/">
  <key name="picture-uri" type="s"><default>'file:///pictures/by%20day.png'</default></key>
  <key name="picture-uri-dark" type="s"><default>'file:///pictures/by-night.png'</default></key></schema>
<schema id="org.gnome.shell.keybindings" path="/org/gnome/shell/keybindings/">
  <key name="toggle-overview" type="as"><default>['&lt;Super&gt;s', '&lt;Nothing&gt;t']</default></key></schema>
<schema id="org.gnome.settings-daemon.plugins.media-keys" path="/org/gnome/settings-daemon/plugins/media-keys/">
  <key name="custom-keybindings" type="as"><default>['/a/', 'no path', '/a//']</default></key></schema>
<schema id="org.gnome.settings-daemon.plugins.media-keys.custom-keybinding">
  <key name="binding" type="s"><default>'&lt;Ctrl&gt;&lt;Alt&gt;x'</default></key>
  <key name="name" type="s"><default>'F5'</default></key></schema>
<schema id="org.mate.Marco.global-keybindings" path="/org/mate/marco/global-keybindings/">
  <key name="panel-run-dialog" type="s"><default>'&lt;Alt&gt;F2'</default></key></schema>
<schema id="org.mate.background" path="/org/mate/background/">
  <key name="picture-filename" type="s"><default>'/pictures/ÄÖ.png'</default></key></schema>
<schema id="org.cinnamon.desktop.background" path="/org/cinnamon/desktop/background/">
  <key name="picture-uri" type="s"><default>'file:///pictures/c.png'</default></key></schema>
</schemalist>)";
const auto keysOfPlasma = R"([kwin]
_k_friendly_name=Meta+Z
Window Close=Alt+F4,Alt+F4,Close Window
Overview=Meta+Shift+M\tMeta+\,,Meta+W,Overview
Edit Tiles=none,Meta+T,Toggle
Sequence=Ctrl+X\, Ctrl+C,,
Log Out=Ctrl+Alt+Del\tF12\tMeta+PgUp
broken
[services][org.kde.dolphin.desktop]
_launch=Meta+E
)"s;
const auto pictureOfPlasma =
    "[Containments][1]\nImage=/none.png\n"
    "[Containments][1][Wallpaper][org.kde.image][General]\nImage=file:///pictures/p.png\n"s;
const auto darkWithoutKeys = "[org/gnome/desktop/interface]\ncolor-scheme='prefer-dark'\n"
                             "[org/gnome/shell/keybindings]\ntoggle-overview=@as []\n"
                             "[org/gnome/settings-daemon/plugins/media-keys]\ncustom-keybindings=@as []\n"s;
/// One after the other, by their keys' names.
std::set<std::string> named(const std::vector<DesktopShortcut>& shortcuts) {
    std::set<std::string> names;
    for (const auto& [symbol, modifiers] : shortcuts) {
        char name[64];
        xkb_keysym_get_name(symbol, name, sizeof name);
        names.insert((modifiers & controlKey ? "⌃"s : "") + (modifiers & optionKey ? "⌥" : "") +
                     (modifiers & shiftKey ? "⇧" : "") + (modifiers & cmdKey ? "⌘" : "") + name);
    }
    return names;
}

/// Each desktop by its settings: files in the configuration folder, GSettings, or xfconf.
TEST(RunningDesktop, IsAskedInItsOwnWay) {
    providePrivateBus();
    int count = 0;
    const QCoreApplication application(count, nullptr);
    BusStandIn xfconf({"org.xfce.Xfconf"});
    xfconf.methods["org.xfce.Xfconf.GetProperty xfce4-desktop "
                   "/backdrop/screen0/monitorHDMI-1/workspace0/last-image"] = [](auto&) {
        return QVariantList{busVariant("/pictures/x.png")};
    };
    QVariantMap shortcuts{{"/commands/default/<Alt>F1", "menu"},
                          {"/commands/custom/override", true},
                          {"/commands/custom/<Alt>F2", true},
                          {"/commands/custom/<Alt>F3", ""},
                          {"/xfwm4/default/<Alt>F4", "close_window_key"},
                          {"/xfwm4/custom/<Alt>F5", "move_window_key"}};
    for (const auto* text : {"<Primary><Alt>Delete", "<super>E", "<Shift><Mod4>space", "<Super>Above_Tab",
                             "XF86AudioMute", "<Hyper>a", "<Alt", "<Alt>", "disabled", ""})
        shortcuts[QString("/commands/custom/") + text] = "run";
    xfconf.methods["org.xfce.Xfconf.GetAllProperties xfce4-keyboard-shortcuts /"] = [=](auto&) {
        return QVariantList{shortcuts};
    };
    const TemporaryFolder schemaFolder;
    std::ofstream(schemaFolder.path() / "stand-in.gschema.xml") << schemas;
    ASSERT_EQ(std::system(("glib-compile-schemas " + schemaFolder.path().string()).c_str()), 0);
    qputenv("GSETTINGS_SCHEMA_DIR", schemaFolder.path().c_str());
    qputenv("XDG_DATA_DIRS", schemaFolder.path().c_str()); // no schemas of the machine's
    qputenv("GSETTINGS_BACKEND", "keyfile");

    const fs::path lxde = "pcmanfm/LXDE/desktop-items-0.conf",
                   lxdeDefault = "pcmanfm/default/desktop-items-0.conf",
                   lxqt = "pcmanfm-qt/lxqt/settings.conf";
    const struct {
        const char* names;
        std::map<fs::path, std::string> files;
        std::optional<fs::path> wallpaper;
        std::set<std::string> shortcuts;
    } cases[] = {
        {"XFCE", {}, "/pictures/x.png", {"⌃⌥Delete", "⌘e", "⇧⌘space", "⌘grave", "XF86AudioMute", "⌥F4"}},
        {"ubuntu:GNOME", {}, "/pictures/by day.png", {"⌘s", "⌃⌥x"}},
        {"Budgie:KDE",
         {{"glib-2.0/settings/keyfile", darkWithoutKeys}, {"kglobalshortcutsrc", keysOfPlasma}},
         "/pictures/by-night.png",
         {}},
        {"mate", {}, "/pictures/ÄÖ.png", {"⌥F2"}},
        {"X-Cinnamon", {}, "/pictures/c.png", {}},
        {"KDE:GNOME",
         {{"kglobalshortcutsrc", keysOfPlasma}, {"plasma-org.kde.plasma.desktop-appletsrc", pictureOfPlasma}},
         "/pictures/p.png",
         {"⌥F4", "⇧⌘m", "⌘comma", "⌃⌥Delete", "F12", "⌘Prior", "⌘e"}},
        {"KDE", {{"kglobalshortcutsrc", std::string(1 << 20, '#') + "\na=F1"}}, {}, {}},
        {"LXDE",
         {{lxde, "[*]\nwallpaper_mode=crop\nwallpaper=/pictures/l.png\n"},
          {lxdeDefault, "[*]\nwallpaper=/d.png\n"}},
         "/pictures/l.png",
         {}},
        {"LXDE", {{lxdeDefault, "[*]\nwallpaper=/d.png\n"}}, "/d.png", {}},
        {"LXQt", {{lxqt, "[Desktop]\nWallpaper=/pictures/\\xc4.png\n"}}, "/pictures/Ä.png", {}},
        {"LXQt", {{lxqt, "[Desktop]\nWallpaper=relative.png\n"}}, {}, {}},
        {"Something:Else", {{"kglobalshortcutsrc", keysOfPlasma}}, {}, {}},
    };
    constexpr std::chrono::seconds bound{30}; // which no machine is busy enough to miss
    BoundedBus bus(QDBusConnection::sessionBus(), bound);
    const GSettings settings(bound);
    for (const auto& [names, files, wallpaper, shortcuts] : cases) {
        SCOPED_TRACE(names);
        const TemporaryFolder configuration;
        for (const auto& [file, text] : files) {
            fs::create_directories((configuration.path() / file).parent_path());
            std::ofstream(configuration.path() / file) << text;
        }
        qputenv("XDG_CONFIG_HOME", configuration.path().c_str());
        qputenv("XDG_CURRENT_DESKTOP", names);
        const auto desktop = runningDesktop(bus, settings);
        EXPECT_EQ(desktop->wallpaper("HDMI-1"), wallpaper);
        EXPECT_EQ(named(desktop->shortcuts()), shortcuts);
    }
    qunsetenv("GSETTINGS_SCHEMA_DIR");
    qunsetenv("XDG_DATA_DIRS");
}

} // namespace
} // namespace tavro
