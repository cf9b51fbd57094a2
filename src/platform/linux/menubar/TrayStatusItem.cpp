#include "platform/linux/menubar/TrayStatusItem.h"

#include "platform/linux/input/EventSource.h"
#include "platform/linux/menubar/ToolkitMenu.h"
#include "platform/linux/menubar/TrayHost.h"
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

} // namespace

TrayStatusItem::TrayStatusItem(XConnection& x, MainQueue& queue, EventSource& events)
    : m_x(x)
    , m_events(events)
    , m_drawing(queue, [this] { drawIcon(); }) {}

TrayStatusItem::~TrayStatusItem() = default;

void TrayStatusItem::show(TrayHost& host) {
    m_icon = host.makeIcon({QCoreApplication::applicationName(), QGuiApplication::applicationDisplayName(),
                            translated("Click: options; middle click: presentation mode")},
                           [this](auto click) { pressed(click); });
    drawIcon();
    if (m_hostMenu)
        m_icon->setMenu(m_hostMenu, [this] { hostOpensMenu(); });
    m_icon->show();
}

void TrayStatusItem::setMenu(std::shared_ptr<Menu> menu) {
    m_attachedMenu = std::move(menu);
}

void TrayStatusItem::announceMenu(std::shared_ptr<Menu> menu) {
    m_hostMenu = std::move(menu);
    if (m_icon)
        m_icon->setMenu(m_hostMenu, [this] { hostOpensMenu(); });
}

void TrayStatusItem::setImage(std::optional<NamedImage> image) {
    m_image = std::move(image);
    m_drawing.schedule(); // after what the audience sees
}

void TrayStatusItem::drawIcon() {
    if (m_icon)
        m_icon->setIcon(icon());
}

// Without a picture the item keeps its place, and its clicks.
QIcon TrayStatusItem::icon() {
    if (m_image)
        return m_icons.try_emplace(m_image->name, toolkitIcon(*m_image)).first->second;
    QPixmap blank(usualSize, usualSize);
    blank.fill(Qt::transparent);
    return QIcon(blank);
}

Rect TrayStatusItem::frame() const {
    const auto geometry = m_icon ? m_icon->geometry() : QRect();
    if (geometry.isEmpty()) // a StatusNotifierItem does not know where it is drawn
        return {{0, 0}, {usualSize, usualSize}};
    return QtScreens::coordinates().fromToolkit(geometry);
}

Point TrayStatusItem::positionOnScreen() const {
    const auto geometry = m_icon ? m_icon->geometry() : QRect();
    const auto place = geometry.isEmpty() ? trayPlace(m_x) : geometry.center();
    return QtScreens::coordinates().fromToolkit(place);
}

void TrayStatusItem::pressed(TrayIcon::Click click) {
    // The panel's call says nothing of them, so they are those of the moment when it arrives.
    const auto modifiers = modifierFlags(QGuiApplication::queryKeyboardModifiers());
    switch (click) {
    case TrayIcon::Click::left:
        return clicked(EventType::leftMouseUp, modifiers);
    case TrayIcon::Click::middle:
        return clicked(EventType::leftMouseUp, modifiers | EventModifierFlags::option);
    case TrayIcon::Click::right:
        return clicked(EventType::rightMouseUp, modifiers);
    }
}

void TrayStatusItem::clicked(EventType type, unsigned modifierFlags) {
    if (m_attachedMenu)
        return popUp(m_attachedMenu, {});
    if (m_action && (m_actionMask & eventMask(type)))
        m_events.deliver({type, modifierFlags}, m_action);
}

// The panel has the menu from here on, and not every panel says when it closes it.
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
    m_popUp = toolkitMenu(*menu);
    QObject::connect(m_popUp.get(), &QMenu::aboutToHide, m_popUp.get(), [this, menu] { closed(menu); });
    m_popUp->popup(besidePanel(m_x, QCursor::pos(), m_popUp->sizeHint()).topLeft());
}

void TrayStatusItem::closed(const std::shared_ptr<Menu>& menu) {
    if (menu->delegate)
        menu->delegate->menuDidClose(*menu);
}

} // namespace tavro
