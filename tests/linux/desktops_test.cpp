#include "platform/input/HotKeyCenter.h"
#include "platform/linux/bus/BoundedBus.h"
#include "platform/linux/bus/GSettings.h"
#include "platform/linux/desktops/GnomeBackground.h"
#include "platform/linux/desktops/RunningDesktop.h"

#include "support/TemporaryFolder.h"
#include "support/servers/BusStandIn.h"
#include "support/servers/PrivateBus.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>

namespace tavro {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

// Stand-ins of schemas: as documented, with a few of their keys.
constexpr auto schemas = R"(<schemalist>
<schema id="org.gnome.desktop.interface" path="/org/gnome/desktop/interface/">
  <key name="color-scheme" type="s"><default>'default'</default></key></schema>
<schema id="org.gnome.desktop.background" path="/org/gnome/desktop/background/">
  <key name="picture-options" type="s"><default>'scaled'</default></key>
  <key name="color-shading-type" type="s"><default>'vertical'</default></key>
  <key name="primary-color" type="s"><default>'#023c88'</default></key>
  <key name="secondary-color" type="s"><default>'rgb(255,0,16)'</default></key>
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
<schema id="org.mate.control-center.keybinding">
  <key name="binding" type="s"><default>''</default></key>
  <key name="name" type="s"><default>'F5'</default></key></schema>
<schema id="org.cinnamon.desktop.keybindings" path="/org/cinnamon/desktop/keybindings/">
  <key name="custom-list" type="as"><default>['F6']</default></key>
  <key name="looking-glass-keybinding" type="as"><default>['&lt;Super&gt;l']</default></key></schema>
<schema id="org.cinnamon.desktop.keybindings.media-keys" path="/org/cinnamon/desktop/keybindings/media-keys/">
  <key name="home" type="as"><default>['&lt;Super&gt;e', 'XF86Explorer']</default></key></schema>
<schema id="org.cinnamon.desktop.keybindings.custom-keybinding">
  <key name="binding" type="as"><default>['&lt;Ctrl&gt;F7']</default></key>
  <key name="name" type="s"><default>'F5'</default></key></schema>
<schema id="org.mate.background" path="/org/mate/background/">
  <key name="picture-options" type="s"><default>'wallpaper'</default></key>
  <key name="picture-filename" type="s"><default>'/pictures/ÄÖ.png'</default></key></schema>
<schema id="org.cinnamon.desktop.background" path="/org/cinnamon/desktop/background/">
  <key name="picture-options" type="s"><default>'spanned'</default></key>
  <key name="picture-uri" type="s"><default>'file:///pictures/c.png'</default></key></schema>
</schemalist>)";
const auto keysOfPlasma = "[kwin]\n_k_friendly_name=Meta+Z\nWindow Close=Alt+F4,Alt+F4,Close Window\n"
                          "Overview=Meta+Shift+M\\tMeta+\\,,Meta+W,Overview\nEdit Tiles=none,Meta+T,Toggle\n"
                          "Sequence=Ctrl+X\\, Ctrl+C,,\nLog Out=Ctrl+Alt+Del\\tF12\\tMeta+PgUp\nbroken\n"
                          "[services][org.kde.dolphin.desktop]\n_launch=Meta+E\n"s;
const auto keysOfOpenbox =
    "<openbox_config xmlns='http://openbox.org/3.4/rc'><keyboard><keybind key='C-A-Shift-Delete'/>"
    "<keybind key='W-e C-e'><keybind key='F1'/></keybind><keybind key='H-a'/></keyboard>"
    "<mouse><mousebind button='A-Left'/></mouse></openbox_config>"s;
const auto containmentsOfPlasma =
    "[Containments][1]\nactivityId=other\nformfactor=0\nlastScreen=1\nwallpaperplugin=org.kde.color\n"
    "[Containments][2]\nformfactor=2\nlastScreen=1\n"
    "[Containments][3]\nactivityId=this\nformfactor=0\nlastScreen=1\nwallpaperplugin=org.kde.image\n"
    "[Containments][3][Wallpaper][org.kde.color][General]\nColor=1,2,3\n"
    "[Containments][3][Wallpaper][org.kde.image][General]\nColor=#0a0b0c\nFillMode=6\n"s;
const auto colorOfPlasma = "[Containments][7]\nformfactor=0\nlastScreen=1\nwallpaperplugin=org.kde.color\n"s;
const auto general = "[Containments][7][Wallpaper][org.kde.color][General]\n"s;
const auto darkWithoutKeys = "[org/gnome/desktop/interface]\ncolor-scheme='prefer-dark'\n"
                             "[org/gnome/shell/keybindings]\ntoggle-overview=@as []\n"
                             "[org/gnome/settings-daemon/plugins/media-keys]\ncustom-keybindings=@as []\n"
                             "[org/gnome/desktop/background]\npicture-options='none'\n"s;

std::string describe(const std::optional<DesktopBackground>& background) {
    if (!background)
        return "unknown";
    constexpr const char* scalings[] = {"centered", "tiled", "stretched", "fitted", "zoomed"};
    constexpr const char* shadings[] = {"", " to the right", " downwards"};
    constexpr const char* scalers[] = {"", " (up)", " (GdkPixbuf)", " (texture)", " (Quick)"};
    const auto& style = background->style;
    std::ostringstream text;
    text << background->picture.value_or("nothing").string() << ' '
         << scalings[static_cast<int>(style.scaling)] << scalers[static_cast<int>(style.scaler)]
         << (background->spansScreens ? " over all screens" : "")
         << (background->isOfWorkspace ? " of the workspace" : "") << std::hex << " on " << style.colors[0]
         << shadings[static_cast<int>(style.shading)];
    if (style.shading != BackgroundStyle::Shading::solid)
        text << " to " << style.colors[1];
    return text.str();
}

std::string describe(const std::optional<DesktopLook>& look) {
    std::ostringstream text;
    text << (!look ? "unknown" : look->isDark ? "dark" : "light");
    if (look && look->font)
        text << ' ' << look->font->family().toStdString() << ' ' << look->font->pointSizeF();
    return text.str();
}

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
    const QString backdrop = "/backdrop/screen0/monitorHDMI-1/workspace2/";
    QVariantMap background{{"/backdrop/single-workspace-mode", false},
                           {backdrop + "last-image", "/pictures/x.png"},
                           {backdrop + "image-style", 4},
                           {backdrop + "color-style", 1},
                           {backdrop + "rgba1", QVariantList{0.0, 0.5, 1.0, 1.0}},
                           {backdrop + "rgba2", QVariantList{2.0, "x"}}};
    xfconf.methods["org.xfce.Xfconf.GetAllProperties xfce4-desktop /"] = [=](auto&) {
        return QVariantList{background};
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
    qputenv("XDG_DATA_DIRS", schemaFolder.path().c_str());   // no schemas of the machine's
    qputenv("XDG_CONFIG_DIRS", schemaFolder.path().c_str()); // no settings either
    qputenv("GSETTINGS_BACKEND", "keyfile");

    // What Plasma ships: a package of pictures, which is the look's.
    const TemporaryFolder data;
    const auto images = data.path() / "wallpapers/Hills/contents/images";
    fs::create_directories(images);
    fs::create_directories(images.string() + "_dark");
    fs::create_directories(data.path() / "plasma/look-and-feel/own/contents");
    for (const auto* name : {"1280x800.png", "1280x1024.png", "1680x1050.png", "1920x1080.png", "other.png"})
        std::ofstream(images / name) << 'x';
    std::ofstream(images.string() + "_dark/1x1.jpg") << 'x';
    std::ofstream(data.path() / "plasma/look-and-feel/own/contents/defaults") << "[Wallpaper]\nImage=Hills\n";
    qputenv("XDG_DATA_HOME", data.path().c_str());

    const fs::path lxde = "pcmanfm/LXDE/desktop-items-1.conf",
                   lxdeDefault = "pcmanfm/default/desktop-items-1.conf",
                   lxdeAll = "pcmanfm/default/pcmanfm.conf", lxqt = "pcmanfm-qt/lxqt/settings.conf",
                   plasma = "plasma-org.kde.plasma.desktop-appletsrc";
    const auto picture = (data.path() / "p.png").string();
    std::ofstream(picture) << 'x';
    const struct {
        const char* names;
        std::map<fs::path, std::string> files;
        std::string background;
        std::set<std::string> shortcuts;
        std::string look{};
    } cases[] = {
        {"XFCE",
         {},
         "/pictures/x.png fitted (GdkPixbuf) of the workspace on 80ff to the right to ff0000",
         {"⌃⌥Delete", "⌘e", "⇧⌘space", "⌘grave", "XF86AudioMute", "⌥F4"}},
        {"ubuntu:GNOME",
         {},
         "/pictures/by day.png fitted (texture) on 0 downwards to 0",
         {"⌘s", "⌃⌥x"},
         "light"},
        {"Budgie:KDE",
         {{"glib-2.0/settings/keyfile", darkWithoutKeys}, {"kglobalshortcutsrc", keysOfPlasma}},
         "nothing zoomed (texture) on 23c88 downwards to ff0010",
         {},
         "dark"},
        {"mate", {}, "/pictures/ÄÖ.png tiled on 0", {"⌥F2"}},
        {"mate",
         {{"glib-2.0/settings/keyfile", "[org/mate/desktop/keybindings/custom9]\nbinding='<Mod4>9'\n"}},
         "/pictures/ÄÖ.png tiled on 0",
         {"⌥F2", "⌘9"}},
        {"X-Cinnamon",
         {},
         "/pictures/c.png stretched over all screens on 0",
         {"⌘l", "⌘e", "XF86Explorer", "⌃F7"}},
        {"KDE:GNOME",
         {{"kglobalshortcutsrc", keysOfPlasma},
          {"kactivitymanagerdrc", "[main]\ncurrentActivity=this\n"},
          {plasma, containmentsOfPlasma + "Image=file://" + picture + '\n'}},
         picture + " centered (Quick) on a0b0c",
         {"⌥F4", "⇧⌘m", "⌘comma", "⌃⌥Delete", "F12", "⌘Prior", "⌘e"}},
        {"KDE",
         {{plasma, containmentsOfPlasma + "Image=/gone.png\n"},
          {"kactivitymanagerdrc", "[main]\ncurrentActivity=this\n"},
          {"kdeglobals", "[KDE]\nLookAndFeelPackage=own\n"}},
         (images / "1680x1050.png").string() + " centered (Quick) on a0b0c",
         {}},
        {"KDE",
         {{"kdedefaults/package", "own\n"},
          {"kdedefaults/kdeglobals", "[General]\nfont=Serif,9,-1,5,50,0,0,0,0,0\n"},
          {"kdeglobals", "[Colors:Window]\nBackgroundNormal=42,46,50\n"}},
         images.string() + "_dark/1x1.jpg zoomed (Quick) on 0",
         {},
         "dark Serif 9"},
        {"KDE", {{plasma, colorOfPlasma}}, "nothing zoomed (Quick) on 1d99f3", {}},
        {"KDE", {{plasma, colorOfPlasma + general + "Color=1,2,3"}}, "nothing zoomed (Quick) on 10203", {}},
        {"KDE",
         {{"kglobalshortcutsrc", std::string(1 << 20, '#') + "\na=F1"}},
         "nothing zoomed (Quick) on 0",
         {}},
        {"LXDE",
         {{lxde, "[*]\nwallpaper_mode=crop\nwallpaper=/pictures/l.png\ndesktop_bg=#ff8000\n"},
          {lxdeDefault, "[*]\nwallpaper=/d.png\n"}},
         "/pictures/l.png zoomed (GdkPixbuf) on ff8000",
         {}},
        {"LXDE",
         {{lxdeDefault,
           "[*]\nwallpaper=/d.png\nwallpaper2=/w.png\nwallpaper_common=0\nwallpaper_mode=screen"}},
         "/w.png stretched (GdkPixbuf) over all screens of the workspace on 0",
         {}},
        {"LXDE",
         {{lxdeAll, "[desktop]\nwallpaper=/d.png\nwallpaper_mode=color"}},
         "nothing fitted (GdkPixbuf) on 0",
         {}},
        {"LXDE", {}, "unknown", {}},
        {"LXDE",
         {{"openbox/lxde-rc.xml", keysOfOpenbox}, {"openbox/rc.xml", "<keybind key='F9'/>"}},
         "unknown",
         {"⌃⌥⇧Delete", "⌘e"}},
        {"LXQt",
         {{lxqt, "[Desktop]\nWallpaper=/pictures/\\xc4.png\nWallpaperMode=zoom\nPerScreenWallpaper=true"}},
         "/pictures/Ä.png zoomed (up) on 0",
         {}},
        {"LXQt",
         {{lxqt,
           "[Desktop]\nWallpaper=a.png\nWallpaperDirectory=/a\nSlideShowInterval=9\nLastSlide=/a/b.png\n"
           "WallpaperMode=tile\nPerScreenWallpaper=true"}},
         "/a/b.png tiled (up) over all screens on 0",
         {}},
        {"LXQt",
         {{lxqt, "[Desktop]\nWallpaper=relative.png\nBgColor=#00ff00"},
          {"lxqt/globalkeyshortcuts.conf",
           "[Control%2BAlt%2BT.24]\nEnabled=true\n[F8.2]\nEnabled=false\n[XF86AudioMute.3]\npath=/a.b/c\n"},
          {"openbox/rc.xml", keysOfOpenbox},
          {"lxqt/lxqt.conf",
           "[Qt]\nfont=\"Sans,11.5,-1,5,50,0,0,0,0,0\"\n[Palette]\nwindow_color=#232323\n"}},
         "nothing stretched over all screens on ff00",
         {"⌃⌥t", "XF86AudioMute", "⌃⌥⇧Delete", "⌘e"},
         "dark Sans 11.5"},
        {"LXQt",
         {{lxqt, "[Desktop]"},
          {"lxqt/session.conf", "[General]\nwindow_manager=xfwm4\n"},
          {"openbox/rc.xml", keysOfOpenbox}},
         "nothing stretched over all screens on 0",
         {}},
        {"i3",
         {{"i3/config", "set $m Mod4\nset  $my Mod1+Shift\n  bindsym --release $m+d exec x\n"
                        "bindsym $my+Return exec y\nbindsym\n# bindsym F1 a\nbindcode 38 b\n"
                        "mode \"resize\" {\n bindsym F2 c\n}\nbindsym Ctrl+F3 d\n"}},
         "unknown",
         {"⌘d", "⌥⇧Return", "⌃F3"}},
        {"Something:Else", {{"kglobalshortcutsrc", keysOfPlasma}}, "unknown", {}},
    };
    constexpr std::chrono::seconds bound{30}; // which no machine is busy enough to miss
    BoundedBus bus(QDBusConnection::sessionBus(), bound);
    const GSettings settings(bound);
    for (const auto& [names, files, background, shortcuts, look] : cases) {
        SCOPED_TRACE(names);
        const TemporaryFolder configuration;
        for (const auto& [file, text] : files) {
            fs::create_directories((configuration.path() / file).parent_path());
            std::ofstream(configuration.path() / file) << text;
        }
        qputenv("XDG_CONFIG_HOME", configuration.path().c_str());
        qputenv("XDG_CURRENT_DESKTOP", names);
        const auto desktop = runningDesktop(bus, settings);
        EXPECT_EQ(describe(desktop->background({"HDMI-1", 1, 2, {1920, 0, 1440, 900}})), background);
        EXPECT_EQ(named(desktop->shortcuts()), shortcuts);
        if (!look.empty()) {
            EXPECT_EQ(describe(desktop->look()), look);
        }
    }
    qunsetenv("GSETTINGS_SCHEMA_DIR");
    qunsetenv("XDG_DATA_DIRS");
    qunsetenv("XDG_DATA_HOME");
    qunsetenv("XDG_CONFIG_DIRS");
}

TEST(GnomeBackground, ASlideShowResolvesToTheCurrentPicture) {
    const QByteArray show =
        "<background><starttime><year>2020</year><month>2</month><day>1</day><hour>6</hour>"
        "<minute>0</minute><second>0</second></starttime>"
        "<static><duration>3600</duration><file>/day.png</file></static>"
        "<transition type='overlay'><duration>600</duration>"
        "<from>/day.png</from><to>/night.png</to></transition>"
        "<static><duration>1800</duration><file>"
        "<size width='1024' height='768'>/night-4-3.png</size>"
        "<size width='1920' height='1080'>/night.png</size></file></static></background>";
    const QDateTime start({2020, 2, 1}, {6, 0, 0});
    const struct {
        QByteArray xml;
        qint64 seconds;
        std::optional<fs::path> picture;
    } cases[] = {
        {show, 0, "/day.png"},
        {show, 3899, "/day.png"},
        {show, 3900, "/night.png"},
        {show, 5999, "/night.png"},
        {show, 6000 * 1000 + 3599, "/day.png"},
        {show, -1, "/night.png"},
        {"<background><static><file>/only.png</file></static></background>", 9, "/only.png"},
        {"<background><static><duration>1e999</duration><file>/a.png</file>", 9, "/a.png"},
        {"<background></background>", 0, {}},
        {"<other><static><file>/a.png</file></static></other>", 0, {}},
        {"", 0, {}},
    };
    for (const auto& [xml, seconds, picture] : cases)
        EXPECT_EQ(pictureOfSlideShow(xml, start.addSecs(seconds), {1440, 900}), picture)
            << xml.toStdString() << seconds;
}

} // namespace
} // namespace tavro
