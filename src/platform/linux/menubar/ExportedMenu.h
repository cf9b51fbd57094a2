#pragma once

#include "platform/menubar/Menu.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusVariant>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace tavro {

/// An entry with those below it, as the protocol nests them.
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QList<MenuLayout> children;
};
struct MenuProperties {
    int id = 0;
    QVariantMap properties;
};
struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint time = 0;
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuProperties& properties);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuProperties& properties);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

/// A menu that a panel shows for us (com.canonical.dbusmenu, version 3): the root is entry 0, and its items
/// are numbered from 1 in their order. The menu does not change while it is exported.
class ExportedMenu final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    /// `opens` runs each time before a panel shows the menu. The object stands at the path until it ends.
    ExportedMenu(QDBusConnection bus, QString path, std::shared_ptr<const Menu> menu,
                 std::function<void()> opens);
    ~ExportedMenu() override;

    uint version() const { return 3; }
    QString status() const { return "normal"; }
    QString textDirection() const;
    QStringList iconThemePath() const { return {}; }

    // NOLINTBEGIN(readability-identifier-naming): the protocol's names
public Q_SLOTS:
    Q_SCRIPTABLE uint GetLayout(int parent, int depth, const QStringList& names, tavro::MenuLayout& layout);
    Q_SCRIPTABLE QList<tavro::MenuProperties> GetGroupProperties(const QList<int>& ids,
                                                                 const QStringList& names);
    Q_SCRIPTABLE QDBusVariant GetProperty(int id, const QString& name);
    Q_SCRIPTABLE void Event(int id, const QString& name, const QDBusVariant& data, uint time);
    Q_SCRIPTABLE QList<int> EventGroup(const QList<tavro::MenuEvent>& events);
    Q_SCRIPTABLE bool AboutToShow(int id);
    Q_SCRIPTABLE QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& unknown);
    // NOLINTEND(readability-identifier-naming)

private:
    const MenuItem* item(int id) const;
    QVariantMap properties(int id, const QStringList& names) const;

    QDBusConnection m_bus;
    const QString m_path;
    const std::shared_ptr<const Menu> m_menu;
    const std::function<void()> m_opens;
};

} // namespace tavro

Q_DECLARE_METATYPE(tavro::MenuLayout)
Q_DECLARE_METATYPE(tavro::MenuProperties)
Q_DECLARE_METATYPE(tavro::MenuEvent)
