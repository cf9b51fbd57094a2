#pragma once

#include "platform/linux/menubar/ExportedMenu.h"
#include "platform/linux/menubar/TrayIcon.h"

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QList>
#include <QObject>

namespace tavro {

/// A picture as the protocol has it: 32 bits a pixel, alpha first, in network order.
struct TrayPixmap {
    int width = 0, height = 0;
    QByteArray pixels;
};
using TrayPixmaps = QList<TrayPixmap>;

struct TrayToolTip {
    QString icon;
    TrayPixmaps pixmaps;
    QString title, text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const TrayPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const TrayToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, TrayToolTip& toolTip);

/// A tray item that the panel draws and asks for over the session bus (freedesktop.org StatusNotifierItem,
/// KDE's revision). All that goes out is sent and not waited for.
class StatusNotifierItem final : public QObject, public TrayIcon {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(tavro::TrayPixmaps IconPixmap READ iconPixmap)
    Q_PROPERTY(tavro::TrayToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)

public:
    static constexpr auto watcherService = "org.kde.StatusNotifierWatcher";
    static constexpr auto watcherPath = "/StatusNotifierWatcher";

    /// The item takes `name` on that connection, which has no other item, and `released` runs at its end.
    StatusNotifierItem(QDBusConnection bus, QString name, Identity identity,
                       std::function<void(Click)> clicked, std::function<void()> released);
    ~StatusNotifierItem() override;

    void setIcon(const QIcon& icon) override;
    void setMenu(std::shared_ptr<const tavro::Menu> menu, std::function<void()> opens) override;
    void show() override;
    /// The panel does not say.
    QRect geometry() const override { return {}; }
    /// Registers the item with a watcher; another one than before gets it anew.
    void registerWithWatcher();
    /// A watcher has dropped an item: ours, though we are there, gets another chance.
    void watcherDropped(const QString& item);

    QString category() const { return "ApplicationStatus"; }
    QString id() const { return m_identity.id; }
    QString title() const { return m_identity.title; }
    QString status() const { return "Active"; }
    int windowId() const { return 0; }
    /// None: of a symbolic icon's name, Xfce's panel keeps the colour that it had when the theme changed,
    /// MATE, KDE and LXQt draw it dark on dark panels, and Cinnamon draws nothing.
    QString iconName() const { return {}; }
    TrayPixmaps iconPixmap() const { return m_pixmaps; }
    TrayToolTip toolTip() const { return {{}, {}, m_identity.title, m_identity.hint}; }
    /// Or panels would open the menu on a left click, in place of `Activate`.
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const;

    // NOLINTBEGIN(readability-identifier-naming): the protocol's names
public Q_SLOTS:
    Q_SCRIPTABLE void Activate(int x, int y);
    Q_SCRIPTABLE void SecondaryActivate(int x, int y);
    Q_SCRIPTABLE void ContextMenu(int x, int y);
    Q_SCRIPTABLE void Scroll(int, const QString&) {}

Q_SIGNALS:
    Q_SCRIPTABLE void NewIcon();
    Q_SCRIPTABLE void NewMenu();
    // NOLINTEND(readability-identifier-naming)

private:
    void click(Click click);

    QDBusConnection m_bus;
    const QString m_name;
    const Identity m_identity;
    const std::function<void(Click)> m_clicked;
    const std::function<void()> m_released;
    int m_chancesLeft = 5;
    TrayPixmaps m_pixmaps;
    std::unique_ptr<ExportedMenu> m_menu;
};

} // namespace tavro

Q_DECLARE_METATYPE(tavro::TrayPixmap)
Q_DECLARE_METATYPE(tavro::TrayToolTip)
