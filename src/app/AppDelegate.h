#pragma once

#include "platform/Application.h"
#include "platform/Menu.h"
#include "platform/ObserverList.h"

#include <memory>
#include <vector>

namespace tavro {

class StatusItem;

/// The root of everything that runs: launches the product, turns clicks on the status item into actions, and
/// turns presentation mode off when the system ends the process.
class AppDelegate final : public ApplicationDelegate, public MenuDelegate {
public:
    void applicationDidFinishLaunching() override;
    void applicationDidReopen() override;
    void applicationWillResignActive() override;
    void applicationWillTerminate() override;
    /// Detaches the menu, so that the next plain click is handled here again.
    void menuDidClose(Menu& menu) override;

    /// A click on the status item, by the event that is being handled: Option switches presentation mode;
    /// the right button or Control opens the menu.
    void menuBarAction();
    void quitTavro();

    std::shared_ptr<StatusItem> statusBarItem;
    std::shared_ptr<Menu> statusBarMenu;

private:
    void createStatusItem();
    void createMenu();
    void writeFirstLaunchDefaults();
    void changeIcon();
    void focusedAppDidChange();
    void switchPresentationMode();
    void openMenu();

    std::vector<Observation> m_observations;
};

} // namespace tavro
