#pragma once

#include "platform/linux/desktops/Desktop.h"

namespace tavro {

/// Of the text of KDE's file "kglobalshortcutsrc".
std::vector<DesktopShortcut> parsePlasmaShortcuts(const QString& text);

/// KDE Plasma: its files in the configuration folder.
class Plasma final : public Desktop {
public:
    std::optional<std::filesystem::path> wallpaper(const std::string& connector) override;
    std::vector<DesktopShortcut> shortcuts() override;
};

} // namespace tavro
