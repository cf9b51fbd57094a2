#pragma once

#include <QFont>

#include <optional>

namespace tavro {

/// What a desktop's own settings say of how programs are to look.
struct DesktopLook {
    bool isDark = false;
    std::optional<QFont> font;
    bool operator==(const DesktopLook&) const = default;
};

} // namespace tavro
