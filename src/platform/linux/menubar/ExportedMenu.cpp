#include "platform/linux/menubar/ExportedMenu.h"

#include "toolkit/Translation.h"

#include <QDBusMetaType>
#include <QGuiApplication>

namespace tavro {

namespace {

constexpr int root = 0;
constexpr uint revision = 1; // of a layout that never changes

void registerTypes() {
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuProperties>();
    qDBusRegisterMetaType<QList<MenuProperties>>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
}

/// Where an underscore is one, and not the sign of an access key.
QString label(const std::string& title) {
    return translated(title).replace('_', "__");
}

} // namespace

// The protocol wraps each child into a variant, since no type of the bus can contain itself.
QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout) {
    argument.beginStructure();
    argument << layout.id << layout.properties;
    argument.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const auto& child : layout.children)
        argument << QDBusVariant(QVariant::fromValue(child));
    argument.endArray();
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout) {
    QVariantList children;
    argument.beginStructure();
    argument >> layout.id >> layout.properties >> children;
    argument.endStructure();
    for (const auto& child : children)
        layout.children.append(qdbus_cast<MenuLayout>(child));
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuProperties& properties) {
    argument.beginStructure();
    argument << properties.id << properties.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuProperties& properties) {
    argument.beginStructure();
    argument >> properties.id >> properties.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.time;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.time;
    argument.endStructure();
    return argument;
}

ExportedMenu::ExportedMenu(QDBusConnection bus, QString path, std::shared_ptr<const Menu> menu,
                           std::function<void()> opens)
    : m_bus(std::move(bus))
    , m_path(std::move(path))
    , m_menu(std::move(menu))
    , m_opens(std::move(opens)) {
    registerTypes();
    m_bus.registerObject(m_path, this, QDBusConnection::ExportScriptableContents);
}

ExportedMenu::~ExportedMenu() {
    m_bus.unregisterObject(m_path);
}

QString ExportedMenu::textDirection() const {
    return QGuiApplication::isRightToLeft() ? "rtl" : "ltr";
}

const MenuItem* ExportedMenu::item(int id) const {
    const bool isKnown = id > root && static_cast<std::size_t>(id) <= m_menu->items.size();
    return isKnown ? &m_menu->items[static_cast<std::size_t>(id) - 1] : nullptr;
}

// No names stand for all properties; what has its default may be left out.
QVariantMap ExportedMenu::properties(int id, const QStringList& names) const {
    QVariantMap all;
    if (const auto* entry = item(id)) {
        all["label"] = label(entry->title);
        all["enabled"] = entry->action != nullptr;
    } else if (id == root) {
        all["children-display"] = "submenu";
    }
    if (!names.isEmpty())
        all.removeIf([&](const auto& property) { return !names.contains(property.key()); });
    return all;
}

uint ExportedMenu::GetLayout(int parent, int depth, const QStringList& names, MenuLayout& layout) {
    layout = {parent, properties(parent, names), {}};
    if (parent == root && depth != 0)
        for (int id = 1; item(id); ++id)
            layout.children.append({id, properties(id, names), {}});
    return revision;
}

// No ids stand for all of them.
QList<MenuProperties> ExportedMenu::GetGroupProperties(const QList<int>& ids, const QStringList& names) {
    QList<MenuProperties> result;
    for (int id = root; id == root || item(id); ++id)
        if (ids.isEmpty() || ids.contains(id))
            result.append({id, properties(id, names)});
    return result;
}

QDBusVariant ExportedMenu::GetProperty(int id, const QString& name) {
    return QDBusVariant(properties(id, {name}).value(name, QString()));
}

// Here as below the panel gets its answer first.
void ExportedMenu::Event(int id, const QString& name, const QDBusVariant&, uint) {
    if (const auto* entry = item(id); entry && entry->action && name == "clicked")
        QMetaObject::invokeMethod(this, entry->action, Qt::QueuedConnection);
}

QList<int> ExportedMenu::EventGroup(const QList<MenuEvent>& events) {
    QList<int> unknown;
    for (const auto& event : events)
        if (event.id == root || item(event.id))
            Event(event.id, event.name, event.data, event.time);
        else
            unknown.append(event.id);
    return unknown;
}

// Whether the layout must be fetched again, which it never must.
bool ExportedMenu::AboutToShow(int id) {
    if (id == root)
        QMetaObject::invokeMethod(this, m_opens, Qt::QueuedConnection);
    return false;
}

QList<int> ExportedMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& unknown) {
    for (const int id : ids)
        if (id == root || item(id))
            AboutToShow(id);
        else
            unknown.append(id);
    return {};
}

} // namespace tavro
