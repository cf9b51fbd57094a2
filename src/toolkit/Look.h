#pragma once

#include <QPalette>

#include <string>

namespace tavro {

/// How the rest of the desktop looks.
struct Look {
    bool isDark = false;
    bool hasHighContrast = false;
    bool operator==(const Look&) const = default;
};

/// By the name of its theme, such as "Greybird-dark", "Mint-Y-Dark-Aqua" or "HighContrastInverse", and by
/// what it says its programs should prefer.
Look lookOf(const std::string& theme, bool prefersDark);
/// The toolkit's colours to match. What is light and of usual contrast is the toolkit's own, or its plugin's
/// for the desktop, where that is seen well.
QPalette paletteOf(const Look& look);

} // namespace tavro
