#include "toolkit/Look.h"

#include <QColor>
#include <QString>

#include <initializer_list>
#include <utility>

namespace tavro {

namespace {

using Colors = std::initializer_list<std::pair<QPalette::ColorRole, const char*>>;

/// White text is legible on it, and it is seen on light and dark windows.
constexpr auto accent = "#2878cc";

QPalette with(QPalette palette, const Colors& colors) {
    for (const auto& [role, color] : colors)
        palette.setColor(role, QColor(color));
    return palette;
}

QPalette lightPalette() {
    return with({}, {{QPalette::Highlight, accent},
                     {QPalette::LinkVisited, "#7a1fa2"},
                     {QPalette::PlaceholderText, "#666666"}});
}

QPalette darkPalette() {
    const QColor disabled("#8c8c8c");
    auto palette =
        with(QPalette(QColor("#404040"), QColor("#2e2e2e")), {{QPalette::Base, "#232323"},
                                                              {QPalette::AlternateBase, "#292929"},
                                                              {QPalette::Highlight, accent},
                                                              {QPalette::Link, "#78aeed"},
                                                              {QPalette::LinkVisited, "#b9a2e8"},
                                                              {QPalette::ToolTipBase, "#1b1b1b"},
                                                              {QPalette::PlaceholderText, "#9a9a9a"},
                                                              {QPalette::WindowText, "#eeeeee"},
                                                              {QPalette::ButtonText, "#eeeeee"},
                                                              {QPalette::Text, "#eeeeee"},
                                                              {QPalette::ToolTipText, "#eeeeee"}});
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, disabled);
    return palette;
}

QPalette highContrastPalette(bool isDark) {
    const auto *ground = isDark ? "black" : "white", *ink = isDark ? "white" : "black";
    return with(QPalette(QColor(ground), QColor(ground)), {{QPalette::Base, ground},
                                                           {QPalette::AlternateBase, ground},
                                                           {QPalette::Highlight, isDark ? "yellow" : "navy"},
                                                           {QPalette::HighlightedText, ground},
                                                           {QPalette::Link, isDark ? "cyan" : "blue"},
                                                           {QPalette::LinkVisited, isDark ? "cyan" : "blue"},
                                                           {QPalette::ToolTipBase, ground},
                                                           {QPalette::PlaceholderText, ink},
                                                           {QPalette::WindowText, ink},
                                                           {QPalette::ButtonText, ink},
                                                           {QPalette::Text, ink},
                                                           {QPalette::ToolTipText, ink}});
}

} // namespace

Look lookOf(const std::string& theme, bool prefersDark) {
    const auto name = QString::fromStdString(theme).toLower();
    return {prefersDark || name.contains("dark") || name.contains("inverse"),
            name.contains("highcontrast") || name.contains("contrasthigh")};
}

QPalette paletteOf(const Look& look) {
    if (look.hasHighContrast)
        return highContrastPalette(look.isDark);
    return look.isDark ? darkPalette() : lightPalette();
}

} // namespace tavro
