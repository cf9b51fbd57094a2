#pragma once

#include "platform/menubar/Menu.h"
#include "platform/storage/Image.h"
#include "platform/windows/Geometry.h"

#include <functional>
#include <memory>
#include <optional>

namespace tavro {

/// The visible part of a status item.
class StatusBarButton {
public:
    virtual ~StatusBarButton() = default;
    /// Runs on the main thread for each click that `sendActionOn` asks for, while no menu is attached;
    /// `Application::currentEvent` says which one it was.
    virtual void setAction(std::function<void()> action) = 0;
    /// The event types that send the action; see `eventMask`.
    virtual void sendActionOn(unsigned mask) = 0;
    /// None: the button stays where it is, without a picture.
    virtual void setImage(std::optional<NamedImage> image) = 0;
    /// In screen coordinates; at the origin, with the usual size, where the machine does not know the place.
    virtual Rect frame() const = 0;
    /// Where it stands, as near as the machine knows.
    virtual Point positionOnScreen() const = 0;
    /// Pops the menu up at a point in the button's coordinates, no item selected. Its delegate is notified
    /// once when it has closed, or been handed over to a status bar that draws it itself.
    virtual void popUp(const std::shared_ptr<Menu>& menu, Point location) = 0;
};

/// An item in the system's status bar; dropping it removes it. It is there whenever a status bar is: one that
/// comes later, or restarts, shows it too. Main thread only.
class StatusItem {
public:
    virtual ~StatusItem() = default;
    /// Null for an item without one.
    virtual StatusBarButton* button() = 0;
    /// While a menu is attached, a click opens it in place of sending the action.
    virtual void setMenu(std::shared_ptr<Menu> menu) = 0;
    /// Tells which menu `popUp` will show. Status bars that draw menus themselves (StatusNotifierItem) must
    /// know it before the click; the action is sent for that click as for every other.
    virtual void announceMenu(std::shared_ptr<Menu> menu) = 0;
};

/// Where programs show an item that stays. There may be no such place for a while, or ever: items are made
/// all the same. Main thread only.
class StatusBar {
public:
    /// As wide as its content.
    static constexpr double variableLength = -1;

    virtual ~StatusBar() = default;
    virtual std::shared_ptr<StatusItem> statusItem(double length) = 0;
};

} // namespace tavro
