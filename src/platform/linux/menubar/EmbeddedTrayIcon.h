#pragma once

#include "platform/linux/menubar/TrayIcon.h"

#include <QMenu>
#include <QSystemTrayIcon>

namespace tavro {

/// A small window in the panel's own (freedesktop.org System Tray Protocol over XEmbed), for panels that know
/// no StatusNotifierItem. To be made only where no watcher of those is on the bus: the toolkit asks for one
/// when the first icon is made, and waits for a watcher that hangs.
class EmbeddedTrayIcon final : public TrayIcon {
public:
    EmbeddedTrayIcon(const Identity& identity, std::function<void(Click)> clicked);
    ~EmbeddedTrayIcon() override;

    void setIcon(const QIcon& icon) override { m_icon->setIcon(icon); }
    void setMenu(std::shared_ptr<const Menu> menu, std::function<void()> opens) override;
    void show() override { m_icon->show(); }
    QRect geometry() const override { return m_icon->geometry(); }

private:
    void activated(QSystemTrayIcon::ActivationReason reason);

    std::function<void(Click)> m_clicked;
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace tavro
