#include "platform/linux/desktops/DesktopAppearance.h"

#include "platform/linux/x11/XConnection.h"
#include "platform/linux/x11/XSettings.h"

#include <QApplication>
#include <QFont>
#include <QPalette>

#include <utility>

namespace tavro {

namespace {

bool isDark(const QColor& window) {
    constexpr int middle = 128;
    return window.lightness() < middle;
}

QPalette darkPalette() {
    const QColor disabled("#8c8c8c");
    QPalette palette(QColor("#404040"), QColor("#2e2e2e"));
    for (const auto& [role, color] : {std::pair(QPalette::Base, "#232323"),
                                      {QPalette::AlternateBase, "#292929"},
                                      {QPalette::Highlight, "#3584e4"},
                                      {QPalette::Link, "#78aeed"},
                                      {QPalette::LinkVisited, "#b9a2e8"},
                                      {QPalette::ToolTipBase, "#1b1b1b"},
                                      {QPalette::PlaceholderText, "#9a9a9a"},
                                      {QPalette::WindowText, "#eeeeee"},
                                      {QPalette::ButtonText, "#eeeeee"},
                                      {QPalette::Text, "#eeeeee"},
                                      {QPalette::ToolTipText, "#eeeeee"}})
        palette.setColor(role, QColor(color));
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, disabled);
    return palette;
}

} // namespace

DesktopAppearance::DesktopAppearance(XConnection& x)
    : m_x(x)
    , m_selection(x.atom("_XSETTINGS_S" + std::to_string(x.screenNumber())))
    , m_property(x.atom("_XSETTINGS_SETTINGS")) {
    m_newSettings = m_x.onNewManager(m_selection, [this] { findSettings(); });
    findSettings();
}

void DesktopAppearance::findSettings() {
    const XReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_x.raw(), xcb_get_selection_owner(m_x.raw(), m_selection), nullptr));
    if (!reply || reply->owner == XCB_NONE)
        return;
    m_owner = reply->owner;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_x.raw(), m_owner, XCB_CW_EVENT_MASK, &mask);
    m_changes = m_x.onPropertyChange(m_owner, m_property, [this] { apply(); });
    apply();
}

void DesktopAppearance::apply() {
    auto texts = textsOfXSettings(m_x.text(m_x.request(m_owner, m_property)));
    if (const auto font = fontOf(texts["Gtk/FontName"]); font && *font != QApplication::font())
        QApplication::setFont(*font);
    // As the names of dark themes go: "Greybird-dark", "Adwaita-dark", "Yaru-purple-dark",
    // "Mint-Y-Dark-Aqua".
    const bool isThemeDark =
        QString::fromStdString(texts["Net/ThemeName"]).contains("dark", Qt::CaseInsensitive);
    if (isThemeDark == m_isDark || (isThemeDark && isDark(QApplication::palette().color(QPalette::Window))))
        return; // a plugin of the toolkit may have seen to it
    m_isDark = isThemeDark;
    QApplication::setPalette(isThemeDark ? darkPalette() : QPalette());
}

std::optional<QFont> DesktopAppearance::fontOf(const std::string& description) {
    auto words = QString::fromStdString(description).split(' ', Qt::SkipEmptyParts);
    const double size = words.isEmpty() ? 0 : words.takeLast().toDouble();
    constexpr double greatest = 100;
    if (words.isEmpty() || !(size > 0 && size <= greatest))
        return std::nullopt;
    QFont font;
    font.setPointSizeF(size);
    for (; words.size() > 1; words.removeLast()) {
        const auto& style = words.back();
        if (style == "Bold")
            font.setWeight(QFont::Bold);
        else if (style == "Medium")
            font.setWeight(QFont::Medium);
        else if (style == "Light")
            font.setWeight(QFont::Light);
        else if (style == "Italic" || style == "Oblique")
            font.setItalic(true);
        else if (style != "Regular" && style != "Book")
            break;
    }
    auto family = words.join(' ');
    font.setFamily(family.endsWith(',') ? family.chopped(1) : family);
    return font;
}

} // namespace tavro
