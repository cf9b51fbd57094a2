#include "platform/linux/menubar/TrayControlStrip.h"

#include "platform/linux/menubar/TrayHost.h"
#include "toolkit/Colors.h"
#include "toolkit/Icons.h"
#include "toolkit/Translation.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPixmap>

#include <algorithm>

namespace tavro {

namespace {

constexpr Color systemBezelColor{0.39, 0.39, 0.39, 1};

QColor bezel(const TouchBarButton& button) {
    return toolkitColor(button.bezelColor.value_or(systemBezelColor));
}

void paintLabel(const TouchBarButton& button, QPainter& painter, const QRect& area) {
    const auto color = legibleOn(bezel(button));
    if (button.image) {
        painter.drawPixmap(area, tinted(*button.image, area.size(), color, 1));
        return;
    }
    auto font = painter.font();
    font.setPixelSize(area.height() / 2);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(area, Qt::AlignCenter, QString::fromStdString(button.title));
}

QPixmap picture(const TouchBarButton& button, int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(bezel(button));
    const double radius = size * 0.22;
    painter.drawRoundedRect(QRectF(pixmap.rect()), radius, radius);
    const int margin = size / 8;
    paintLabel(button, painter, pixmap.rect().adjusted(margin, margin, -margin, -margin));
    return pixmap;
}

QIcon drawn(const TouchBarButton& button) {
    QIcon icon;
    for (const int size : TrayIcon::sizes)
        icon.addPixmap(picture(button, size));
    return icon;
}

} // namespace

// The audience sees covers and windows first.
TrayControlStrip::TrayControlStrip(TrayHost& host, MainQueue& queue)
    : m_host(host)
    , m_updating(queue, [this] { updateAll(); }) {}

TrayControlStrip::~TrayControlStrip() = default;

void TrayControlStrip::setPresence(const std::string& identifier, bool isPresent) {
    if (isPresent)
        m_present.insert(identifier);
    else
        m_present.erase(identifier);
    m_updating.schedule();
}

void TrayControlStrip::addSystemTrayItem(std::shared_ptr<CustomTouchBarItem> item) {
    if (std::ranges::any_of(m_entries, [&](const auto& entry) { return entry->item == item; }))
        return;
    if (m_entries.empty() && !m_hasHost)
        m_host.whenAvailable([this] {
            m_hasHost = true;
            m_updating.schedule();
        });
    const auto& entry = m_entries.emplace_back(std::make_unique<Entry>());
    entry->item = std::move(item);
    entry->viewChange = entry->item->viewDidChange([this] { m_updating.schedule(); });
    m_updating.schedule();
}

void TrayControlStrip::removeSystemTrayItem(const std::shared_ptr<CustomTouchBarItem>& item) {
    const auto found =
        std::ranges::find_if(m_entries, [&](const auto& entry) { return entry->item == item; });
    if (found == m_entries.end())
        return;
    m_entries.erase(found);
}

void TrayControlStrip::updateAll() {
    for (const auto& entry : m_entries)
        update(*entry);
}

void TrayControlStrip::update(Entry& entry) {
    const auto& button = entry.item->view();
    if (!m_hasHost || !button || !m_present.contains(entry.item->identifier()))
        return entry.icon.reset();
    if (entry.icon)
        entry.icon->setIcon(iconOf(*button));
    else
        show(entry, *button);
}

void TrayControlStrip::show(Entry& entry, const TouchBarButton& button) {
    const auto label = entry.item->customizationLabel();
    const auto id = QCoreApplication::applicationName() + '-' + QString::fromStdString(label).toLower();
    entry.icon = m_host.makeIcon({id, translated(label), {}}, [item = entry.item](auto) { touch(*item); });
    entry.icon->setIcon(iconOf(button));
    entry.icon->show();
}

// There are few of them, which come again with every presentation.
const QIcon& TrayControlStrip::iconOf(const TouchBarButton& button) {
    const auto name = QString::fromStdString(button.image ? button.image->name : button.title);
    auto& icon = m_icons[name + bezel(button).name(QColor::HexArgb)];
    if (icon.isNull())
        icon = drawn(button);
    return icon;
}

void TrayControlStrip::touch(const CustomTouchBarItem& item) {
    if (const auto& button = item.view(); button && button->action)
        button->action();
}

} // namespace tavro
