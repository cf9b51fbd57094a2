#pragma once

#include "platform/input/Event.h"
#include "platform/linux/menubar/TrayIcon.h"
#include "platform/linux/process/OncePerTurn.h"
#include "platform/menubar/StatusBar.h"

#include <QMenu>

#include <map>
#include <memory>

namespace tavro {

class EventSource;
class TrayHost;
class XConnection;

/// The program's item in the tray. Panels do not hand on Alt-clicks, so a middle click stands
/// for a click with Option. Many panels draw the menu of a right click themselves; the click is delivered all
/// the same, and the menu that is asked for is the one that shows already.
class TrayStatusItem final : public StatusItem, public StatusBarButton {
public:
    TrayStatusItem(XConnection& x, MainQueue& queue, EventSource& events);
    ~TrayStatusItem() override;

    /// There is a tray now.
    void show(TrayHost& host);

    StatusBarButton* button() override { return this; }
    void setMenu(std::shared_ptr<Menu> menu) override;
    void announceMenu(std::shared_ptr<Menu> menu) override;

    void setAction(std::function<void()> action) override { m_action = std::move(action); }
    void sendActionOn(unsigned mask) override { m_actionMask = mask; }
    void setImage(std::optional<NamedImage> image) override;
    Rect frame() const override;
    Point positionOnScreen() const override;
    void popUp(const std::shared_ptr<Menu>& menu, Point location) override;

private:
    void pressed(TrayIcon::Click click);
    void clicked(EventType type, unsigned modifierFlags);
    void hostOpensMenu();
    void closed(const std::shared_ptr<Menu>& menu);
    void popUpAtPointer(const std::shared_ptr<Menu>& menu);
    void drawIcon();
    QIcon icon();

    XConnection& m_x;
    EventSource& m_events;
    std::function<void()> m_action;
    unsigned m_actionMask = 0;
    std::optional<NamedImage> m_image;
    std::map<std::string, QIcon> m_icons; // which keep what they have drawn
    OncePerTurn m_drawing;
    std::shared_ptr<Menu> m_attachedMenu;
    std::shared_ptr<Menu> m_hostMenu;
    bool m_hostShowsMenu = false;
    std::unique_ptr<QMenu> m_popUp;
    std::unique_ptr<TrayIcon> m_icon; // null until there is a tray
};

} // namespace tavro
