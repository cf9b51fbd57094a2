#pragma once

#include "platform/menubar/Menu.h"
#include "platform/process/Application.h"
#include "platform/process/ObserverList.h"
#include "popover/Shell.h"
#include "preferences/PreferenceView.h"

#include <memory>
#include <optional>
#include <vector>

namespace tavro {

class Popover;
class StatusItem;

/// The root of everything that runs: launches the product, turns clicks on the status item into actions, and
/// turns presentation mode off when the system ends the process.
class AppDelegate final : public ApplicationDelegate, public MenuDelegate, public Shell {
public:
    AppDelegate() = default;
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;
    /// Closes the preferences, which would keep themselves.
    ~AppDelegate() override;

    void applicationDidFinishLaunching() override;
    void applicationDidReopen() override;
    void applicationWillResignActive() override;
    void applicationWillTerminate() override;
    /// Detaches the menu, so that the next plain click is handled here again.
    void menuDidClose(Menu& menu) override;

    /// A click on the status item, by the event that is being handled: Option switches presentation mode;
    /// the right button or Control opens the menu; any other shows the popover, or closes it.
    void menuBarAction();
    /// Shows the popover at the status item. Without a button nothing happens.
    void showPopover();
    /// Shows the popover at the status item, or closes it. Without a button nothing happens.
    void togglePopover();
    void closePopover() override;
    void toggle() override;
    /// What the status item, the global shortcut and termination come to.
    void switchPresentationMode();
    void openPreferenceWindow() override;
    void quitTavro();

    std::shared_ptr<Popover> popover;
    std::shared_ptr<StatusItem> statusBarItem;
    std::shared_ptr<Menu> statusBarMenu;
    std::optional<PreferenceView> preferenceView;

private:
    void createPopover();
    void createStatusItem();
    void createMenu();
    void bindShortcuts();
    void offerActions();
    static void storeFirstDefaults();
    void changeIcon();
    void focusedAppDidChange();
    void openMenu();

    std::vector<Observation> m_observations;
};

} // namespace tavro
