#include "platform/linux/desktops/DesktopAppearance.h"

#include "platform/linux/desktops/SettingsText.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/linux/x11/XSettings.h"
#include "toolkit/OutlinedStyle.h"

#include <QApplication>
#include <QFileInfo>
#include <QPalette>
#include <QStandardPaths>
#include <QStyle>

#include <chrono>
#include <utility>

namespace tavro {

namespace {

bool isPaletteDark() {
    return isDarkColor(QApplication::palette().color(QPalette::Window).rgb());
}

} // namespace

DesktopAppearance::DesktopAppearance(XConnection& x, Question question, const QString& file)
    : m_x(x)
    , m_selection(x.atom("_XSETTINGS_S" + std::to_string(x.screenNumber())))
    , m_property(x.atom("_XSETTINGS_SETTINGS"))
    , m_question(std::move(question))
    , m_file(file.isEmpty()
                 ? file
                 : QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + '/' + file)
    , m_scheme([this] { show(); }) {
    QApplication::setStyle(new OutlinedStyle); // the application's from here on
    show();
    m_newSettings = m_x.onNewManager(m_selection, [this] { findSettings(); });
    findSettings();
    if (m_file.isEmpty())
        return;
    constexpr std::chrono::milliseconds untilWritten{100};
    m_soon.setSingleShot(true);
    m_soon.setInterval(untilWritten);
    QObject::connect(&m_soon, &QTimer::timeout, &m_soon, [this] { ask(); });
    ask();
}

// A file that has been replaced is another one, for which a watcher that has seen the former does not look,
// and of which it may not hear while somebody has the former open: the folder tells.
void DesktopAppearance::ask() {
    m_watcher.emplace();
    for (const auto change : {&QFileSystemWatcher::fileChanged, &QFileSystemWatcher::directoryChanged})
        QObject::connect(&*m_watcher, change, &m_soon, qOverload<>(&QTimer::start));
    m_watcher->addPaths({m_file, QFileInfo(m_file).path()});
    m_background.run(m_question, [this](const std::optional<DesktopLook>& look) {
        if (look && std::exchange(m_own, *look) != *look)
            apply();
    });
}

void DesktopAppearance::findSettings() {
    const XReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(m_x.raw(), xcb_get_selection_owner(m_x.raw(), m_selection), nullptr));
    if (!reply || reply->owner == XCB_NONE)
        return;
    m_owner = reply->owner;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_x.raw(), m_owner, XCB_CW_EVENT_MASK, &mask);
    m_changes = m_x.onPropertyChange(m_owner, m_property, [this] { readSettings(); });
    readSettings();
}

void DesktopAppearance::readSettings() {
    m_settings = textsOfXSettings(m_x.text(m_x.request(m_owner, m_property)));
    apply();
}

void DesktopAppearance::apply() {
    const auto font = m_own.font ? m_own.font : fontOf(m_settings["Gtk/FontName"]);
    if (font && *font != QApplication::font())
        QApplication::setFont(*font);
    show();
}

void DesktopAppearance::show() {
    const auto look = lookOf(m_settings["Net/ThemeName"], m_own.isDark || m_scheme.prefersDark());
    if (look == m_look || (look == Look{true, false} && isPaletteDark()))
        return; // a plugin of the toolkit may have seen to it
    m_look = look;
    const auto palette = paletteOf(look);
    QApplication::setPalette(palette);
    if (!look.isDark && isPaletteDark()) // the toolkit's own, as it was at the start
        QApplication::setPalette(palette.resolve(QApplication::style()->standardPalette()));
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
