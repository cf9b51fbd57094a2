#include "app/CoreTavro.h"

#include "app/HideApps.h"
#include "app/KeepAwake.h"
#include "app/Recovery.h"
#include "app/TouchBarController.h"
#include "audio/MuteMic.h"
#include "audio/MuteSpeaker.h"
#include "desktop/HideDesktop.h"
#include "notifications/DoNotDisturb.h"
#include "platform/menubar/ControlStrip.h"
#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "settings/UserSettings.h"

#include <algorithm>
#include <optional>

namespace tavro {

namespace {

/// Unless the presentation is over by the time that this is noted.
void muteSpeaker() {
    Recovery::noteSpeaker([] {
        if (UserSettings::shared().tavroIsOn())
            MuteSpeaker::setMute(true);
    });
}

std::optional<bool> wallpaperChoice(const std::vector<OptionItem>& options) {
    const auto option = std::ranges::find(options, "changeWallpaper", &OptionItem::id);
    return option == options.end() ? std::nullopt : std::optional(option->isOn);
}

} // namespace

CoreTavro::CoreTavro()
    : hideDesktop(HideDesktop::shared())
    , settings(UserSettings::shared()) {}

// The settings say which way it goes: whoever triggers it has inverted them before, so a switch that shows
// "on" and what is done can never disagree.
void CoreTavro::toggle() const {
    const auto options = settings.options();
    if (settings.tavroIsOn())
        turnOn(options, hideDesktop);
    else
        turnOff(options, hideDesktop);
    Process::current().notificationCenter().post(tavroToogleNotification);
}

// In the order of the catalogue, which is what the user reads. None of the steps waits for a peer: silence
// and sound are asked for, and come when their servers answer. The button comes last, since it only says what
// is.
void CoreTavro::turnOn(const std::vector<OptionItem>& options, HideDesktop& hideDesktop) {
    machine().log().print("Turn On --------------");
    const auto choice = wallpaperChoice(options);
    for (const auto& option : options) {
        if (option.id == "hideApps" && option.isOn)
            HideApps::hideOthers();
        else if (option.id == "hideDesktop" && option.isOn)
            hideDesktop.coverScreens(choice);
        else if (option.id == "disableNotification" && option.isOn)
            DoNotDisturb::enable();
        else if (option.id == "muteSpeaker" && option.isOn)
            muteSpeaker();
    }
    KeepAwake::begin();
    TouchBarController::shared().present();
    MuteMic::startObserving([] { TouchBarController::shared().refresh(); });
}

// The options may have changed since the presentation began, so what cannot be undone by the user afterwards
// (covers, windows that still wait to be hidden) is undone whatever they say now.
void CoreTavro::turnOff(const std::vector<OptionItem>& options, HideDesktop& hideDesktop) {
    machine().log().print("Turn Off --------------");
    HideApps::stopHiding(); // also where its option was switched off meanwhile
    for (const auto& option : options) {
        if (option.id == "hideApps" && option.isOn)
            HideApps::showAll();
        else if (option.id == "hideDesktop") // also where it was switched off meanwhile: no cover may stay
            hideDesktop.removeCovers();
        else if (option.id == "disableNotification" && option.isOn)
            DoNotDisturb::disable();
        else if (option.id == "muteSpeaker" && option.isOn) {
            MuteSpeaker::setMute(false);
            Recovery::forgetSpeaker();
        }
        MuteMic::setMute(false); // for every option, whatever it is and says
    }
    KeepAwake::end();
    machine().controlStrip().removeSystemTrayItem(TouchBarController::shared().item);
    MuteMic::stopObserving();
}

} // namespace tavro
