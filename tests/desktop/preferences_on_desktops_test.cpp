#include "support/desktop/Matrix.h"
#include "support/desktop/Pictures.h"
#include "support/desktop/PreferencesTest.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <utility>

// What each desktop has to say in the program's windows: its own shortcuts, its colours, its font; and what
// of the program it starts at login. Each check is a cell of the table in README.md.

namespace {

using Key = Input::Key;

struct Desktop {
    std::string name;
    /// That it comes with.
    std::initializer_list<Key> modifiers;
    Key key;
    /// Commands of the shell, which do what its settings do: Control-Alt-X for something of the user's, its
    /// colours and its font. Empty where there is no such setting.
    std::string addShortcut, makeDark, makeLight, makeFontLarge;
};

std::string gsettings(const std::string& schema, const std::string& key, const std::string& value) {
    return "gsettings set " + schema + ' ' + key + " \"" + value + "\"\n";
}
/// The same for the desktops that took them over from GNOME.
std::string customKeybinding(const std::string& schema, const std::string& path, const std::string& binding) {
    return gsettings(schema + ':' + path, "binding", binding);
}

const std::string gnomeKeys = "org.gnome.settings-daemon.plugins.media-keys",
                  gnomePath = "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/own/",
                  gnomeShortcut =
                      gsettings(gnomeKeys, "custom-keybindings", "['" + gnomePath + "']") +
                      customKeybinding(gnomeKeys + ".custom-keybinding", gnomePath, "<Ctrl><Alt>x"),
                  cinnamonKeys = "org.cinnamon.desktop.keybindings",
                  gnomeLook = "org.gnome.desktop.interface";

const Desktop& desktop() {
    static const Desktop all[] = {
        {"xfce",
         {Key::super},
         Key::e,
         "xfconf-query -c xfce4-keyboard-shortcuts -p '/commands/custom/<Primary><Alt>x' -n -t string -s "
         "true",
         "xfconf-query -c xsettings -p /Net/ThemeName -s Greybird-dark",
         "xfconf-query -c xsettings -p /Net/ThemeName -s Greybird",
         "xfconf-query -c xsettings -p /Gtk/FontName -n -t string -s 'DejaVu Serif 14'"},
        {"mate",
         {Key::control, Key::alt},
         Key::d,
         customKeybinding("org.mate.control-center.keybinding", "/org/mate/desktop/keybindings/custom0/",
                          "<Primary><Alt>x"),
         gsettings("org.mate.interface", "gtk-theme", "Greybird-dark"),
         gsettings("org.mate.interface", "gtk-theme", "Greybird"),
         gsettings("org.mate.interface", "font-name", "DejaVu Serif 14")},
        {"gnome",
         {Key::super},
         Key::s,
         gnomeShortcut,
         gsettings(gnomeLook, "color-scheme", "prefer-dark"),
         gsettings(gnomeLook, "color-scheme", "default"),
         gsettings(gnomeLook, "font-name", "DejaVu Serif 14")},
        {"flashback",
         {Key::super},
         Key::left,
         gnomeShortcut,
         gsettings(gnomeLook, "color-scheme", "prefer-dark"),
         gsettings(gnomeLook, "color-scheme", "default"),
         gsettings(gnomeLook, "font-name", "DejaVu Serif 14")},
        {"cinnamon",
         {Key::super},
         Key::e,
         gsettings(cinnamonKeys, "custom-list", "['custom0']") +
             customKeybinding(cinnamonKeys + ".custom-keybinding",
                              "/org/cinnamon/desktop/keybindings/custom-keybindings/custom0/",
                              "['<Primary><Alt>x']"),
         gsettings("org.cinnamon.desktop.interface", "gtk-theme", "Greybird-dark"),
         gsettings("org.cinnamon.desktop.interface", "gtk-theme", "Greybird"),
         gsettings("org.cinnamon.desktop.interface", "font-name", "DejaVu Serif 14")},
        {"kde",
         {Key::alt},
         Key::f4,
         "gdbus call --session --dest org.kde.kglobalaccel --object-path /kglobalaccel "
         "--method org.kde.KGlobalAccel.setForeignShortcut \"['kwin', 'Show Desktop', 'KWin', '']\" "
         "'[201326680]' >/dev/null", // the toolkit's number of the combination
         "plasma-apply-colorscheme BreezeDark >/dev/null",
         "plasma-apply-colorscheme BreezeLight >/dev/null",
         "kwriteconfig5 --file kdeglobals --group General --key font 'DejaVu Serif,14,-1,5,50,0,0,0,0,0'"},
        {"lxde",
         {Key::super},
         Key::d,
         "mkdir -p $XDG_CONFIG_HOME/openbox && sed 's|<keybind key=\"W-d\">|<keybind key=\"C-A-x\"/>&|' "
         "/etc/xdg/openbox/rc.xml >$XDG_CONFIG_HOME/openbox/rc.xml && openbox --reconfigure",
         "",
         "",
         ""},
        {"lxqt",
         {Key::super},
         Key::d,
         "gdbus call --session --dest org.lxqt.global_key_shortcuts --object-path /daemon --method "
         "org.lxqt.global_key_shortcuts.daemon.addCommandAction Control+Alt+X true '[]' own",
         "cat /usr/share/lxqt/palettes/Dark >>$XDG_CONFIG_HOME/lxqt/lxqt.conf",
         "sed -i '/^.Palette/,$d' $XDG_CONFIG_HOME/lxqt/lxqt.conf",
         "sed -i '1i [Qt]\\nfont=\"DejaVu Serif,14,-1,5,50,0,0,0,0,0\"\\n' $XDG_CONFIG_HOME/lxqt/lxqt.conf"},
        {"i3",
         {Key::alt},
         Key::d,
         "echo 'bindsym Control+Mod1+x exec true' >>$XDG_CONFIG_HOME/i3/config && i3-msg reload >/dev/null",
         "",
         "",
         ""},
    };
    static const auto& found = *std::ranges::find(all, Matrix::desktop(), &Desktop::name);
    return found;
}

} // namespace

class PreferencesOnDesktops : public PreferencesTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(Session::isPrivate());
        parkPointer();
    }
    void TearDown() override {}

    void launch() {
        tavro = std::make_unique<TavroProcess>(TavroProcess::Launch{home, {}, {}});
        ASSERT_TRUE(opensPopover());
    }
    void quit() {
        tavro->signal(SIGTERM);
        EXPECT_EQ(tavro->end(), "exited with 0");
        preferences = XCB_NONE;
    }
    testing::AssertionResult opensPopover() {
        return server.eventually("the popover in front", [this] {
            const auto window = popover(*tavro);
            return window != XCB_NONE && server.active() == window;
        });
    }
    void openPreferences() {
        ASSERT_TRUE(Session::run(call + "ActivateAction preferences '[]' '{}' >/dev/null"));
        ASSERT_TRUE(server.eventually("the preferences alone, in front", [this] {
            const auto all = windows(*tavro);
            return all.size() == 1 && popover(*tavro) == XCB_NONE && server.active() == all.front();
        }));
        preferences = windows(*tavro).front();
    }

    /// Again where nothing comes of it: a window manager may lose the click, and the program may not have
    /// heard yet what the desktop uses.
    testing::AssertionResult refuses(std::initializer_list<Key> modifiers, Key key,
                                     const std::string& nameOfPicture) {
        const auto refused = type(modifiers, key, "an alert", [this] {
            return chooser(*tavro) != XCB_NONE && server.focus() == chooser(*tavro);
        });
        stillPicture(server);
        Matrix::picture(nameOfPicture);
        return refused && closesWith(Key::enter) && closesWith(Key::escape) ? keyboardBecomesFree() : refused;
    }
    testing::AssertionResult type(std::initializer_list<Key> modifiers, Key key, const std::string& what,
                                  const std::function<bool()>& condition) {
        int looks = 0;
        bool isTyped = false;
        return server.eventually(what, [&] {
            if (condition())
                return true;
            // Seldom, since who tries whether the keyboard is free has it for a moment.
            if (++looks % 20 != 0)
                return false;
            if (!server.grabKeyboard()) { // the recorder has it for itself
                if (!std::exchange(isTyped, true))
                    input.type(modifiers, key);
                return false;
            }
            server.ungrabKeyboard();
            if (looks % 1000 == 20 && server.focus() == preferences) {
                isTyped = false;
                clickInPreferences(recorder);
            }
            return false;
        });
    }
    testing::AssertionResult closesWith(Key key) {
        input.type(key);
        return server.eventually("the preferences alone, with the focus", [this] {
            return windows(*tavro) == std::vector{preferences} && server.focus() == preferences;
        });
    }
    /// Another program than ours reads the entry and starts what it names: the second copy opens the popover
    /// of the first.
    testing::AssertionResult loginItemStartsIt() {
        const auto entry = "$XDG_CONFIG_HOME/autostart/com.vantrelo.TavroPRO.desktop";
        const bool isValid = Session::run(std::string("desktop-file-validate ") + entry);
        const bool isStarted = isValid && Session::run(std::string("gio launch ") + entry);
        return isStarted ? opensPopover() : testing::AssertionFailure() << "valid: " << isValid;
    }
    /// On a busy machine GNOME's compositor draws the last change of a window only when something moves.
    testing::AssertionResult isShown(xcb_window_t window, bool asDark) {
        int looks = 0;
        return server.eventually(asDark ? "dark colours" : "light colours", [&] {
            const auto place = server.place(window);
            if (++looks % 2 == 0)
                parkPointer();
            else
                input.moveTo({place.x + place.width / 2, place.y + place.height / 2});
            return showsGround(server.screenshot(place), asDark);
        });
    }

    /// The session's own settings, where the program finds those of the desktop, too.
    const std::filesystem::path home = std::getenv("XDG_CONFIG_HOME");
    const std::string call =
        "gdbus call --session --dest com.vantrelo.TavroPRO --object-path /com/vantrelo/TavroPRO "
        "--method org.freedesktop.Application.";
    std::unique_ptr<TavroProcess> tavro;
};

TEST_F(PreferencesOnDesktops, TakeTheDesktopsKeysColoursAndFont) {
    const Matrix matrix("-preferences");
    EXPECT_TRUE(Session::run(desktop().addShortcut));
    launch();
    EXPECT_TRUE(isShown(popover(*tavro), false));
    Matrix::picture("popover");
    openPreferences();
    EXPECT_TRUE(isShown(preferences, false));
    parkPointer();
    stillPicture(server);
    Matrix::picture("preferences");
    matrix.check("a shortcut of the desktop is refused",
                 refuses(desktop().modifiers, desktop().key, "refusal"));
    matrix.check("a shortcut that the user has added is refused",
                 refuses({Key::control, Key::alt}, Key::x, "refusal-added"));
    matrix.check("another one is taken",
                 type({Key::control, Key::super}, Key::p, "it in the settings", [this] {
                     return contentsOf(home / "com.vantrelo.TavroPRO.plist").find(R"("carbonKeyCode":35)") !=
                            std::string::npos;
                 }));
    EXPECT_TRUE(keyboardBecomesFree());

    // By keys: where the button stands depends on the desktop's font.
    for (const auto key : {Key::tab, Key::tab, Key::space})
        input.type(key);
    const auto opens = server.eventually("the chooser in front", [this] {
        return chooser(*tavro) != XCB_NONE && server.focus() == chooser(*tavro);
    });
    stillPicture(server);
    Matrix::picture("chooser");
    matrix.check("a file chooser opens and can be cancelled", opens ? closesWith(Key::escape) : opens);

    matrix.check("the login item starts it", loginItemStartsIt());
    openPreferences();

    const std::string font = "the desktop's font", dark = "dark with the desktop",
                      start = "dark from the start", light = "light again";
    if (desktop().makeDark.empty()) {
        for (const auto& each : {font, dark, start, light})
            matrix.note(each, "no setting");
        quit();
        return;
    }
    const auto before = stillPicture(server);
    EXPECT_TRUE(Session::run(desktop().makeFontLarge));
    matrix.check(font, server.eventually("another font", [&] {
        return changed(server, before, server.place(preferences), true).width > 100;
    }));
    EXPECT_TRUE(Session::run(desktop().makeDark));
    matrix.check(dark, isShown(preferences, true));
    stillPicture(server);
    Matrix::picture("preferences-dark");
    quit();
    launch();
    matrix.check(start, isShown(popover(*tavro), true));
    Matrix::picture("popover-dark");
    EXPECT_TRUE(Session::run(desktop().makeLight));
    matrix.check(light, isShown(popover(*tavro), false));
    quit();
}
