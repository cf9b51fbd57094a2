#pragma once

#include "platform/input/Event.h"

#include <memory>
#include <utility>

namespace tavro {

class Menu;

/// What an application is notified of. Each call comes on the main thread.
class ApplicationDelegate {
public:
    virtual ~ApplicationDelegate() = default;
    virtual void applicationDidFinishLaunching() = 0;
    /// Somebody started the program again; the second process ends, this one is notified.
    virtual void applicationDidReopen() = 0;
    virtual void applicationWillResignActive() = 0;
    /// Once, before the process ends on a request of the system; not on `Application::exit`.
    virtual void applicationWillTerminate() = 0;
};

/// The application as the system sees it.
class Application {
public:
    virtual ~Application() = default;
    /// The main loop. Returns the exit status when the system asked the application to terminate.
    virtual int run(ApplicationDelegate& delegate) = 0;
    /// Makes this the application that the user works in.
    virtual void activate(bool ignoringOtherApps) = 0;
    /// The event that is being handled.
    virtual Event currentEvent() const = 0;
    /// Ends the process at once, with what user defaults hold on disk; the delegate is not asked.
    virtual void exit(int status) = 0;

    /// The menu whose items' keys work in all windows of the application; may be null.
    const std::shared_ptr<Menu>& mainMenu() const { return m_mainMenu; }
    void setMainMenu(std::shared_ptr<Menu> menu) { m_mainMenu = std::move(menu); }

private:
    std::shared_ptr<Menu> m_mainMenu;
};

} // namespace tavro
