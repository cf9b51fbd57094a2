#pragma once

#include <QString>
#include <QVariantMap>
#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace tavro {

/// A key combination as the settings of a desktop write it: what the key types, and the bits of a hot key's
/// modifiers.
struct DesktopShortcut {
    xkb_keysym_t symbol = XKB_KEY_NoSymbol;
    std::uint32_t modifiers = 0;
    bool operator==(const DesktopShortcut&) const = default;
};

/// In the writing of XFCE, GNOME and MATE: "<Primary><Alt>Delete". None for what cannot be read, or takes a
/// modifier that hot keys do not have.
std::optional<DesktopShortcut> parseAccelerator(const QString& text);
/// Those of every text, and every list of texts, among settings by schema and key.
std::vector<DesktopShortcut> parseAccelerators(const std::map<QString, QVariantMap>& settings);

/// In the writing of openbox, "C-A-Delete", and of LXQt and i3, "Control+Mod1+Delete".
std::optional<DesktopShortcut> parseJoinedKeys(const QString& text, QChar separator);

/// In the writing of KDE: "Ctrl+Alt+Del".
std::optional<DesktopShortcut> parseKeySequence(const QString& text);

} // namespace tavro
