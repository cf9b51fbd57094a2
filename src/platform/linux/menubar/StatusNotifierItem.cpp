#include "platform/linux/menubar/StatusNotifierItem.h"

#include "platform/linux/bus/Send.h"

#include <QDBusMetaType>
#include <QImage>
#include <QPixmap>
#include <QtEndian>

namespace tavro {

namespace {

constexpr auto itemPath = "/StatusNotifierItem";
constexpr auto menuPath = "/MenuBar";
/// What items without a menu say, by agreement of the hosts.
constexpr auto noMenuPath = "/NO_DBUSMENU";
TrayPixmap pixmap(const QIcon& icon, int size) {
    auto image = icon.pixmap(QSize(size, size), 1).toImage().convertToFormat(QImage::Format_ARGB32);
    TrayPixmap result{image.width(), image.height(), QByteArray(image.sizeInBytes(), Qt::Uninitialized)};
    qToBigEndian<quint32>(image.constBits(), image.sizeInBytes() / 4, result.pixels.data());
    return result;
}

void registerTypes() {
    qDBusRegisterMetaType<TrayPixmap>();
    qDBusRegisterMetaType<TrayPixmaps>();
    qDBusRegisterMetaType<TrayToolTip>();
}

} // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const TrayToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.icon << toolTip.pixmaps << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, TrayToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.icon >> toolTip.pixmaps >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

StatusNotifierItem::StatusNotifierItem(QDBusConnection bus, QString name, Identity identity,
                                       std::function<void(Click)> clicked, std::function<void()> released)
    : m_bus(std::move(bus))
    , m_name(std::move(name))
    , m_identity(std::move(identity))
    , m_clicked(std::move(clicked))
    , m_released(std::move(released)) {
    registerTypes();
}

// Without its name the item is gone for every watcher; the connection may serve another one.
StatusNotifierItem::~StatusNotifierItem() {
    send(m_bus, busService, busPath, busService, "ReleaseName", {m_name});
    m_bus.unregisterObject(itemPath);
    m_menu.reset();
    m_released();
}

void StatusNotifierItem::setIcon(const QIcon& icon) {
    m_pixmaps.clear();
    for (const int size : sizes)
        m_pixmaps.append(pixmap(icon, size));
    Q_EMIT NewIcon();
}

void StatusNotifierItem::setMenu(std::shared_ptr<const tavro::Menu> menu, std::function<void()> opens) {
    m_menu.reset(); // before the next one takes its path
    m_menu = std::make_unique<ExportedMenu>(m_bus, menuPath, std::move(menu), std::move(opens));
    Q_EMIT NewMenu();
}

QDBusObjectPath StatusNotifierItem::menu() const {
    return QDBusObjectPath(m_menu ? menuPath : noMenuPath);
}

// The bus handles what one connection sends in its order: the name is ours when the watcher hears of it.
void StatusNotifierItem::show() {
    constexpr uint doNotQueue = 4; // D-Bus, RequestName
    m_bus.registerObject(itemPath, this, QDBusConnection::ExportScriptableContents);
    send(m_bus, busService, busPath, busService, "RequestName", {m_name, doNotQueue});
    registerWithWatcher();
}

// GNOME's host may lose an item that it has just got, and says so: it forgets what it has read when it hears
// of the owner of the item's name, which sometimes comes last.
void StatusNotifierItem::watcherDropped(const QString& item) {
    const bool isOurs = item == m_name || item.startsWith(m_name + '/'); // some add the path
    if (isOurs && m_chancesLeft-- > 0)
        registerWithWatcher();
}

void StatusNotifierItem::registerWithWatcher() {
    send(m_bus, watcherService, watcherPath, watcherService, "RegisterStatusNotifierItem", {m_name});
}

void StatusNotifierItem::Activate(int, int) {
    click(Click::left);
}

void StatusNotifierItem::SecondaryActivate(int, int) {
    click(Click::middle);
}

void StatusNotifierItem::ContextMenu(int, int) {
    click(Click::right);
}

// The panel gets its answer first, and the item may end by its own click.
void StatusNotifierItem::click(Click click) {
    QMetaObject::invokeMethod(
        this, [clicked = m_clicked, click] { clicked(click); }, Qt::QueuedConnection);
}

} // namespace tavro
