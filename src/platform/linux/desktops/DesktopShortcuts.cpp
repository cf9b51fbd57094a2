#include "platform/linux/desktops/DesktopShortcuts.h"

#include "platform/input/HotKeyCenter.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusReply>
#include <QFile>
#include <QKeySequence>
#include <QStandardPaths>
#include <QStringList>
#include <QVariantMap>

#include <gio/gio.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace tavro {

namespace {

using Shortcuts = std::vector<DesktopShortcut>;

void add(Shortcuts& shortcuts, const std::optional<DesktopShortcut>& shortcut) {
    if (shortcut)
        shortcuts.push_back(*shortcut);
}

std::optional<std::uint32_t> modifierNamed(const QString& name) {
    constexpr std::pair<const char*, std::uint32_t> names[] = {
        {"primary", controlKey}, {"control", controlKey}, {"ctrl", controlKey}, {"ctl", controlKey},
        {"alt", optionKey},      {"mod1", optionKey},     {"super", cmdKey},    {"mod4", cmdKey},
        {"shift", shiftKey},     {"shft", shiftKey},
    };
    for (const auto& [known, modifier] : names)
        if (name.compare(QLatin1String(known), Qt::CaseInsensitive) == 0)
            return modifier;
    return std::nullopt;
}

xkb_keysym_t symbolNamed(const QString& name) {
    if (name == "Above_Tab")
        return XKB_KEY_grave;
    const auto bytes = name.toUtf8();
    const auto exact = xkb_keysym_from_name(bytes.constData(), XKB_KEYSYM_NO_FLAGS);
    return xkb_keysym_to_lower(exact ? exact
                                     : xkb_keysym_from_name(bytes.constData(), XKB_KEYSYM_CASE_INSENSITIVE));
}

/// By the toolkit's number of a key.
xkb_keysym_t symbolOf(int key) {
    constexpr std::pair<int, xkb_keysym_t> symbols[] = {
        {Qt::Key_Escape, XKB_KEY_Escape},
        {Qt::Key_Tab, XKB_KEY_Tab},
        {Qt::Key_Backspace, XKB_KEY_BackSpace},
        {Qt::Key_Return, XKB_KEY_Return},
        {Qt::Key_Enter, XKB_KEY_KP_Enter},
        {Qt::Key_Insert, XKB_KEY_Insert},
        {Qt::Key_Delete, XKB_KEY_Delete},
        {Qt::Key_Home, XKB_KEY_Home},
        {Qt::Key_End, XKB_KEY_End},
        {Qt::Key_Left, XKB_KEY_Left},
        {Qt::Key_Up, XKB_KEY_Up},
        {Qt::Key_Right, XKB_KEY_Right},
        {Qt::Key_Down, XKB_KEY_Down},
        {Qt::Key_PageUp, XKB_KEY_Page_Up},
        {Qt::Key_PageDown, XKB_KEY_Page_Down},
        {Qt::Key_Menu, XKB_KEY_Menu},
        {Qt::Key_VolumeMute, XKB_KEY_XF86AudioMute},
        {Qt::Key_VolumeUp, XKB_KEY_XF86AudioRaiseVolume},
        {Qt::Key_VolumeDown, XKB_KEY_XF86AudioLowerVolume},
    };
    if (key < Qt::Key_Escape) // characters; letters in upper case
        return xkb_keysym_to_lower(xkb_utf32_to_keysym(static_cast<std::uint32_t>(key)));
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        return static_cast<xkb_keysym_t>(XKB_KEY_F1 + key - Qt::Key_F1);
    const auto* entry =
        std::ranges::find_if(symbols, [key](const auto& known) { return known.first == key; });
    return entry == std::end(symbols) ? XKB_KEY_NoSymbol : entry->second;
}

// Of commands and of the window manager, each with defaults and a copy of them that the user changes. Texts
// are actions; the members of an action stand one level deeper.
Shortcuts xfceShortcuts() {
    constexpr int answerMilliseconds = 500;
    auto bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered("org.xfce.Xfconf"))
        return {};
    QDBusInterface xfconf("org.xfce.Xfconf", "/org/xfce/Xfconf", "org.xfce.Xfconf", bus);
    xfconf.setTimeout(answerMilliseconds);
    const QDBusReply<QVariantMap> reply = xfconf.call("GetAllProperties", "xfce4-keyboard-shortcuts", "/");
    const auto properties = reply.value(); // empty where the call failed
    Shortcuts shortcuts;
    for (const QString base : {"/commands/", "/xfwm4/"}) {
        const bool isCustom = properties.value(base + "custom/override").toBool();
        const QString folder = base + (isCustom ? "custom/" : "default/");
        for (auto entry = properties.begin(); entry != properties.end(); ++entry) {
            const auto name = entry.key().mid(folder.size());
            const bool isAction = entry.key().startsWith(folder) && !name.contains('/') &&
                                  entry->userType() == QMetaType::QString && !entry->toString().isEmpty();
            if (isAction)
                add(shortcuts, parseAccelerator(name));
        }
    }
    return shortcuts;
}

struct Unref {
    void operator()(GSettingsSchema* schema) const { g_settings_schema_unref(schema); }
    void operator()(GSettings* settings) const { g_object_unref(settings); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(char** texts) const { g_strfreev(texts); }
};
using Schema = std::unique_ptr<GSettingsSchema, Unref>;
using Settings = std::unique_ptr<GSettings, Unref>;

/// The library ends the process for a schema that is not installed, so it is looked up.
Schema schemaNamed(const char* id) {
    auto* source = g_settings_schema_source_get_default();
    return Schema(source ? g_settings_schema_source_lookup(source, id, true) : nullptr);
}

/// The texts of a setting that is a text or a list of them.
QStringList textsOf(GSettings& settings, const char* key) {
    const std::unique_ptr<GVariant, Unref> value(g_settings_get_value(&settings, key));
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING))
        return {QString::fromUtf8(g_variant_get_string(value.get(), nullptr))};
    QStringList texts;
    if (g_variant_is_of_type(value.get(), G_VARIANT_TYPE_STRING_ARRAY)) {
        const std::unique_ptr<char*, Unref> all(g_variant_dup_strv(value.get(), nullptr));
        for (auto* text = all.get(); *text; ++text)
            texts += QString::fromUtf8(*text);
    }
    return texts;
}

void addSchema(Shortcuts& shortcuts, const char* id) {
    const auto schema = schemaNamed(id);
    if (!schema)
        return;
    const Settings settings(g_settings_new_full(schema.get(), nullptr, nullptr));
    const std::unique_ptr<char*, Unref> keys(g_settings_schema_list_keys(schema.get()));
    for (auto* key = keys.get(); *key; ++key)
        for (const auto& text : textsOf(*settings, *key))
            add(shortcuts, parseAccelerator(text));
}

/// What the user has added: a list of paths, each with a binding.
void addCustomGnomeShortcuts(Shortcuts& shortcuts) {
    constexpr auto list = "custom-keybindings", binding = "binding";
    const auto keys = schemaNamed("org.gnome.settings-daemon.plugins.media-keys");
    const auto custom = schemaNamed("org.gnome.settings-daemon.plugins.media-keys.custom-keybinding");
    if (!keys || !custom || !g_settings_schema_has_key(keys.get(), list) ||
        !g_settings_schema_has_key(custom.get(), binding))
        return;
    const Settings settings(g_settings_new_full(keys.get(), nullptr, nullptr));
    for (const auto& path : textsOf(*settings, list)) {
        if (!path.startsWith('/') || !path.endsWith('/') || path.contains("//"))
            continue; // the library ends the process for a path of another form
        const Settings entry(g_settings_new_full(custom.get(), nullptr, path.toUtf8().constData()));
        for (const auto& text : textsOf(*entry, binding))
            add(shortcuts, parseAccelerator(text));
    }
}

Shortcuts gnomeShortcuts() {
    Shortcuts shortcuts;
    for (const auto* id :
         {"org.gnome.desktop.wm.keybindings", "org.gnome.shell.keybindings", "org.gnome.mutter.keybindings",
          "org.gnome.mutter.wayland.keybindings", "org.gnome.settings-daemon.plugins.media-keys"})
        addSchema(shortcuts, id);
    addCustomGnomeShortcuts(shortcuts);
    return shortcuts;
}

Shortcuts mateShortcuts() {
    Shortcuts shortcuts;
    for (const auto* id : {"org.mate.Marco.global-keybindings", "org.mate.Marco.window-keybindings",
                           "org.mate.SettingsDaemon.plugins.media-keys"})
        addSchema(shortcuts, id);
    return shortcuts;
}

/// A field of a list that is separated by commas, where a backslash takes the next character's meaning away.
QString firstField(const QString& list) {
    QString field;
    for (qsizetype i = 0; i < list.size() && list[i] != ','; ++i) {
        const bool isEscape = list[i] == '\\' && i + 1 < list.size();
        if (isEscape && list[++i] == 't')
            field += '\t';
        else
            field += list[i];
    }
    return field;
}

// Lines "action=current,default,description"; "current" holds any number of combinations, tabs between them.
Shortcuts plasmaShortcuts() {
    constexpr qint64 largestFile = 1 << 20;
    const auto path = QStandardPaths::locate(QStandardPaths::GenericConfigLocation, "kglobalshortcutsrc");
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    Shortcuts shortcuts;
    for (const auto& line : QString::fromUtf8(file.read(largestFile)).split('\n')) {
        const auto equals = line.indexOf('=');
        if (equals < 0 || line.startsWith('[') || line.startsWith("_k_friendly_name"))
            continue;
        for (const auto& text : firstField(line.mid(equals + 1)).split('\t'))
            add(shortcuts, parseKeySequence(text));
    }
    return shortcuts;
}

} // namespace

std::optional<DesktopShortcut> parseAccelerator(const QString& text) {
    DesktopShortcut shortcut;
    auto rest = text;
    while (rest.startsWith('<')) {
        const auto end = rest.indexOf('>');
        const auto modifier = end < 0 ? std::nullopt : modifierNamed(rest.mid(1, end - 1));
        if (!modifier)
            return std::nullopt;
        shortcut.modifiers |= *modifier;
        rest = rest.mid(end + 1);
    }
    shortcut.symbol = symbolNamed(rest);
    return shortcut.symbol == XKB_KEY_NoSymbol ? std::nullopt : std::optional(shortcut);
}

std::optional<DesktopShortcut> parseKeySequence(const QString& text) {
    const auto sequence = QKeySequence::fromString(text, QKeySequence::PortableText);
    if (sequence.count() != 1)
        return std::nullopt;
    constexpr std::pair<Qt::KeyboardModifier, std::uint32_t> modifiers[] = {
        {Qt::ControlModifier, controlKey},
        {Qt::AltModifier, optionKey},
        {Qt::ShiftModifier, shiftKey},
        {Qt::MetaModifier, cmdKey},
    };
    DesktopShortcut shortcut{symbolOf(sequence[0].key())};
    for (const auto& [ofToolkit, modifier] : modifiers)
        if (sequence[0].keyboardModifiers() & ofToolkit)
            shortcut.modifiers |= modifier;
    return shortcut.symbol == XKB_KEY_NoSymbol ? std::nullopt : std::optional(shortcut);
}

std::vector<DesktopShortcut> desktopShortcuts() {
    constexpr std::pair<const char*, Shortcuts (*)()> readers[] = {
        {"XFCE", &xfceShortcuts}, {"GNOME", &gnomeShortcuts}, {"Budgie", &gnomeShortcuts},
        {"MATE", &mateShortcuts}, {"KDE", &plasmaShortcuts},
    };
    const auto desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(':');
    for (const auto& [name, reader] : readers)
        if (desktops.contains(QLatin1String(name), Qt::CaseInsensitive))
            return reader();
    return {};
}

} // namespace tavro
