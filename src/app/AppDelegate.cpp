#include "app/AppDelegate.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "LaunchAtLogin/LaunchAtLogin.h"
#include "app/CoreTavro.h"
#include "app/HideApps.h"
#include "app/Recovery.h"
#include "audio/MicrophoneWatch.h"
#include "audio/MuteMic.h"
#include "audio/ToggleMicMute.h"
#include "desktop/CustomWallpaper.h"
#include "platform/applications/Workspace.h"
#include "platform/menubar/StatusBar.h"
#include "platform/process/Accessibility.h"
#include "platform/process/Actions.h"
#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/Images.h"
#include "platform/storage/UserDefaults.h"
#include "platform/windows/Popover.h"
#include "platform/windows/WindowServer.h"
#include "popover/ContentView.h"
#include "settings/Constants.h"
#include "settings/UserSettings.h"
#include "update/VersionObserver.h"

namespace tavro {

namespace {

KeyboardShortcuts::Name muteShortcut() {
    return KeyboardShortcuts::Name(Constants::tavroMuteShortcut);
}

Observation observeToggles(std::function<void()> block) {
    return Process::current().notificationCenter().addObserver(tavroToogleNotification, std::move(block));
}

/// On while some microphone is live.
ActionState microphoneState() {
    return {[] { return !MuteMic::isMuted(); }, [](bool isLive) { MuteMic::setMute(!isLive); },
            [](const auto& changed) {
                return Observation([watch = std::make_shared<MicrophoneWatch>(changed)] {});
            }};
}

} // namespace

AppDelegate::~AppDelegate() {
    if (preferenceView && preferenceView->window)
        preferenceView->window->close();
}

void AppDelegate::applicationDidFinishLaunching() {
    Recovery::putRight();
    machine().application().activate(true);
    // Before the settings are read: presentation mode never survives a restart.
    machine().userDefaults().setObject(Constants::tavroKey, false);
    m_observations.push_back(machine().workspace().notificationCenter().addObserver(
        workspaceDidActivateApplication, [this] { focusedAppDidChange(); }));
    createPopover();
    createStatusItem();
    createMenu();
    m_observations.push_back(observeToggles([this] {
        changeIcon();
        machine().accessibility().announce(UserSettings::shared().tavroIsOn() ? "Presentation mode is on"
                                                                              : "Presentation mode is off");
    }));
    bindShortcuts();
    offerActions();
    if (machine().systemVersion() >= SystemVersion{11, 0})
        machine().accessibility().isProcessTrusted(true);
    storeFirstDefaults();
    VersionObserver::shared().checkVersion();
    togglePopover();
    if (const auto wallpaper = customWallpaperURL())
        PreparedWallpaper::shared().prepare(*wallpaper);
}

void AppDelegate::createPopover() {
    const ContentView content(UserSettings::shared(), VersionObserver::shared(), *this);
    popover = machine().windowServer().createPopover();
    popover->setContentSize({Constants::popoverWidth, Constants::popoverHeight});
    popover->setBehavior(PopoverBehavior::transient);
    popover->setAnimates(false);
    popover->setContentView(std::make_shared<HostingView<ContentView>>(content));
}

void AppDelegate::createStatusItem() {
    statusBarItem = machine().statusBar().statusItem(StatusBar::variableLength);
    if (auto* button = statusBarItem->button()) {
        button->setAction([this] { menuBarAction(); });
        button->sendActionOn(eventMask(EventType::leftMouseUp) | eventMask(EventType::rightMouseUp));
    }
    changeIcon();
}

void AppDelegate::createMenu() {
    statusBarMenu = std::make_shared<Menu>("Status Bar Menu");
    statusBarMenu->delegate = this;
    statusBarMenu->items = {{"Preferences", [this] { openPreferenceWindow(); }, ""},
                            {"Quit", [this] { quitTavro(); }, ""}};
    statusBarItem->announceMenu(statusBarMenu);
}

void AppDelegate::bindShortcuts() {
    KeyboardShortcuts::onKeyDown(muteShortcut(), &toggleMicMute);
    KeyboardShortcuts::onKeyDown(KeyboardShortcuts::Name(Constants::tavroGlobalShortcut),
                                 [this] { switchPresentationMode(); });
}

// Their names are written in desktop entries, shortcuts and scripts.
void AppDelegate::offerActions() {
    const auto setPresentationMode = [this](bool isOn) {
        if (UserSettings::shared().tavroIsOn() != isOn)
            switchPresentationMode();
    };
    machine().actions().offer({
        {"toggle-presentation-mode", [this] { switchPresentationMode(); }, {}},
        {"toggle-microphone", &toggleMicMute, {}},
        {"preferences", [this] { openPreferenceWindow(); }, {}},
        {"quit", [this] { quitTavro(); }, {}},
        {"presentation-mode",
         {},
         ActionState{[] { return UserSettings::shared().tavroIsOn(); }, setPresentationMode,
                     &observeToggles}},
        {"microphone", {}, microphoneState()},
    });
}

void AppDelegate::storeFirstDefaults() {
    auto& defaults = machine().userDefaults();
    if (!defaults.boolForKey(Constants::launchedKey)) {
        defaults.setObject(Constants::launchedKey, true);
        LaunchAtLogin::setIsEnabled(true);
    }
    if (defaults.object(muteShortcut().key()))
        return;
    defaults.setObject(muteShortcut().key(), R"({"carbonModifiers":768,"carbonKeyCode":46})");
    KeyboardShortcuts::enable(muteShortcut()); // in force in this run already
}

void AppDelegate::applicationDidReopen() {
    machine().application().activate(true);
    if (!popover->isShown())
        showPopover();
}

void AppDelegate::applicationWillResignActive() {
    machine().log().print("resign active");
}

void AppDelegate::applicationWillTerminate() {
    if (UserSettings::shared().tavroIsOn())
        switchPresentationMode();
}

void AppDelegate::menuBarAction() {
    const auto event = machine().application().currentEvent();
    if (event.modifierFlags & EventModifierFlags::option)
        switchPresentationMode();
    else if (event.type == EventType::rightMouseUp || (event.modifierFlags & EventModifierFlags::control))
        openMenu();
    else
        togglePopover();
}

void AppDelegate::togglePopover() {
    if (popover->isShown())
        popover->performClose();
    else
        showPopover();
}

void AppDelegate::showPopover() {
    const auto* button = statusBarItem ? statusBarItem->button() : nullptr;
    if (!button)
        return;
    popover->show({{0, 0}, button->frame().size}, *button, RectEdge::minY);
    popover->makeKey();
}

void AppDelegate::openPreferenceWindow() {
    constexpr int firstPage = 0;
    if (preferenceView && preferenceView->prefsWindowDelegate->windowIsOpen)
        preferenceView->window->makeKeyAndOrderFront();
    else
        preferenceView.emplace(firstPage);
}

void AppDelegate::closePopover() {
    popover->close();
}

void AppDelegate::toggle() {
    CoreTavro().toggle();
}

void AppDelegate::switchPresentationMode() {
    auto& settings = UserSettings::shared();
    settings.setTavroIsOn(!settings.tavroIsOn());
    toggle();
}

void AppDelegate::openMenu() {
    constexpr double gap = 2;
    statusBarItem->setMenu(statusBarMenu);
    if (auto* button = statusBarItem->button())
        button->popUp(statusBarMenu, {0, button->frame().size.height + gap});
}

void AppDelegate::menuDidClose(Menu&) {
    statusBarItem->setMenu(nullptr);
}

void AppDelegate::changeIcon() {
    const auto* name = UserSettings::shared().tavroIsOn() ? "menubar-on" : "menubar-off";
    if (auto* button = statusBarItem->button())
        button->setImage(machine().images().named(name));
}

void AppDelegate::focusedAppDidChange() {
    HideApps::rememberFrontmost();
    closePopover();
}

void AppDelegate::quitTavro() {
    machine().application().exit(0);
}

} // namespace tavro
