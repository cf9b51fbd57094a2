#include "platform/linux/menubar/TrayStatusItem.h"

#include "platform/linux/input/EventSource.h"
#include "platform/linux/windows/Panels.h"
#include "platform/linux/windows/QtScreens.h"
#include "toolkit/Icons.h"
#include "toolkit/Translation.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPixmap>

namespace tavro {

namespace {

constexpr int usualSize = 22;

unsigned modifierFlags(Qt::KeyboardModifiers modifiers) {
    unsigned flags = 0;
    if (modifiers & Qt::ShiftModifier)
        flags |= EventModifierFlags::shift;
    if (modifiers & Qt::ControlModifier)
        flags |= EventModifierFlags::control;
    if (modifiers & Qt::AltModifier)
        flags |= EventModifierFlags::option;
    if (modifiers & Qt::MetaModifier)
        flags |= EventModifierFlags::command;
    return flags;
}

void fill(QMenu& widget, const Menu& menu) {
    widget.setTitle(QString::fromStdString(menu.title));
    for (const auto& item : menu.items) {
        auto* action = widget.addAction(translated(item.title));
        action->setEnabled(item.action != nullptr);
        if (item.action)
            QObject::connect(action, &QAction::triggered, action, [run = item.action] { run(); });
    }
}

} // namespace

TrayStatusItem::TrayStatusItem(XConnection& x, EventSource& events)
    : m_x(x)
    , m_events(events) {}

TrayStatusItem::~TrayStatusItem() = default;

void TrayStatusItem::show() {
    m_tray = std::make_unique<QSystemTrayIcon>(icon());
    QObject::connect(m_tray.get(), &QSystemTrayIcon::activated, m_tray.get(),
                     [this](auto reason) { activated(reason); });
    m_tray->setToolTip(QGuiApplication::applicationDisplayName());
    if (m_hostMenuWidget)
        m_tray->setContextMenu(m_hostMenuWidget.get());
    m_tray->show();
}

void TrayStatusItem::setMenu(std::shared_ptr<Menu> menu) {
    m_attachedMenu = std::move(menu);
}

void TrayStatusItem::announceMenu(std::shared_ptr<Menu> menu) {
    m_hostMenu = std::move(menu);
    m_hostMenuWidget = std::make_unique<QMenu>();
    fill(*m_hostMenuWidget, *m_hostMenu);
    auto* widget = m_hostMenuWidget.get();
    QObject::connect(widget, &QMenu::aboutToShow, widget, [this] { hostOpensMenu(); });
    if (m_tray)
        m_tray->setContextMenu(widget);
}

void TrayStatusItem::setImage(std::optional<NamedImage> image) {
    m_image = std::move(image);
    if (m_tray)
        m_tray->setIcon(icon());
}

// Without a picture the item keeps its place, and its clicks.
QIcon TrayStatusItem::icon() const {
    if (m_image)
        return toolkitIcon(*m_image);
    QPixmap blank(usualSize, usualSize);
    blank.fill(Qt::transparent);
    return QIcon(blank);
}

Rect TrayStatusItem::frame() const {
    const auto geometry = m_tray ? m_tray->geometry() : QRect();
    if (geometry.isEmpty()) // a StatusNotifierItem does not know where it is drawn
        return {{0, 0}, {usualSize, usualSize}};
    return QtScreens::coordinates().fromToolkit(geometry);
}

Point TrayStatusItem::positionOnScreen() const {
    const auto geometry = m_tray ? m_tray->geometry() : QRect();
    const auto place = geometry.isEmpty() ? trayPlace(m_x) : geometry.center();
    return QtScreens::coordinates().fromToolkit(place);
}

void TrayStatusItem::activated(QSystemTrayIcon::ActivationReason reason) {
    const auto modifiers = modifierFlags(QGuiApplication::queryKeyboardModifiers());
    switch (reason) {
    case QSystemTrayIcon::Trigger:
    case QSystemTrayIcon::DoubleClick: // the second of two quick clicks
        return clicked(EventType::leftMouseUp, modifiers);
    case QSystemTrayIcon::MiddleClick:
        return clicked(EventType::leftMouseUp, modifiers | EventModifierFlags::option);
    case QSystemTrayIcon::Context: // with an announced menu, its showing tells the click
        if (!m_hostMenu)
            clicked(EventType::rightMouseUp, modifiers);
        return;
    case QSystemTrayIcon::Unknown:
        return;
    }
}

void TrayStatusItem::clicked(EventType type, unsigned modifierFlags) {
    if (m_attachedMenu)
        return popUp(m_attachedMenu, {});
    if (m_action && (m_actionMask & eventMask(type)))
        m_events.deliver({type, modifierFlags}, m_action);
}

// The panel has the menu from here on, and not every panel tells when it closes it.
void TrayStatusItem::hostOpensMenu() {
    m_hostShowsMenu = true;
    clicked(EventType::rightMouseUp, 0);
    m_hostShowsMenu = false;
}

void TrayStatusItem::popUp(const std::shared_ptr<Menu>& menu, Point) {
    if (m_hostShowsMenu && menu == m_hostMenu)
        closed(menu);
    else
        popUpAtPointer(menu);
}

// The pointer is where the item is; the menu opens beside the panel, and the toolkit keeps it on the screen.
void TrayStatusItem::popUpAtPointer(const std::shared_ptr<Menu>& menu) {
    m_popUp = std::make_unique<QMenu>();
    fill(*m_popUp, *menu);
    QObject::connect(m_popUp.get(), &QMenu::aboutToHide, m_popUp.get(), [this, menu] { closed(menu); });
    m_popUp->popup(besidePanel(m_x, QCursor::pos(), m_popUp->sizeHint()).topLeft());
}

void TrayStatusItem::closed(const std::shared_ptr<Menu>& menu) {
    if (menu->delegate)
        menu->delegate->menuDidClose(*menu);
}

} // namespace tavro
