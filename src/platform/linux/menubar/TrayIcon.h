#pragma once

#include <QIcon>
#include <QRect>
#include <QString>

#include <functional>
#include <memory>

namespace tavro {

class Menu;

/// An item in the desktop's tray, by the protocol that the tray speaks. Dropping it takes it out, also from
/// within its own click. Nothing here waits for the panel. Main thread only.
class TrayIcon {
public:
    enum class Click { left, middle, right };
    /// That panels ask for, in pixels; others are scaled from the next one.
    static constexpr int sizes[] = {16, 22, 24, 32, 48, 64};

    /// What panels know an item by, and keep the user's choices under, and its name for people, and what it
    /// is good for.
    struct Identity {
        QString id, title, hint;
    };

    virtual ~TrayIcon() = default;
    virtual void setIcon(const QIcon& icon) = 0;
    /// The tray shows the menu on a right click, which is then not reported as one. `opens` runs each time
    /// the tray is about to.
    virtual void setMenu(std::shared_ptr<const Menu> menu, std::function<void()> opens) = 0;
    /// Puts it into the tray, once.
    virtual void show() = 0;
    /// In the toolkit's coordinates; empty where the tray does not say.
    virtual QRect geometry() const = 0;
};

} // namespace tavro
