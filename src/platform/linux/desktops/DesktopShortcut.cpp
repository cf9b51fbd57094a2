#include "platform/linux/desktops/DesktopShortcut.h"

#include "platform/input/HotKeyCenter.h"

#include <QKeySequence>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <utility>

namespace tavro {

namespace {

std::optional<std::uint32_t> modifierNamed(const QString& name) {
    constexpr std::pair<const char*, std::uint32_t> names[] = {
        {"primary", controlKey}, {"control", controlKey}, {"ctrl", controlKey}, {"ctl", controlKey},
        {"c", controlKey},       {"alt", optionKey},      {"mod1", optionKey},  {"a", optionKey},
        {"super", cmdKey},       {"mod4", cmdKey},        {"w", cmdKey},        {"shift", shiftKey},
        {"shft", shiftKey},      {"s", shiftKey},
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

std::vector<DesktopShortcut> parseAccelerators(const std::map<QString, QVariantMap>& settings) {
    std::vector<DesktopShortcut> shortcuts;
    for (const auto& [schema, values] : settings)
        for (const auto& value : values)
            for (const auto& text : value.toStringList()) // a single text is a list of one
                if (const auto shortcut = parseAccelerator(text))
                    shortcuts.push_back(*shortcut);
    return shortcuts;
}

std::optional<DesktopShortcut> parseJoinedKeys(const QString& text, QChar separator) {
    DesktopShortcut shortcut;
    auto names = text.split(separator);
    shortcut.symbol = symbolNamed(names.takeLast());
    for (const auto& name : names) {
        const auto modifier = modifierNamed(name);
        if (!modifier)
            return std::nullopt;
        shortcut.modifiers |= *modifier;
    }
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

} // namespace tavro
