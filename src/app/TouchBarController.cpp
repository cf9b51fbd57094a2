#include "app/TouchBarController.h"

#include "audio/MuteMic.h"
#include "platform/menubar/ControlStrip.h"
#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/Images.h"

namespace tavro {

namespace {

constexpr Color mutedColor{190.0 / 255, 0, 0, 0.95};
constexpr Color liveColor{92.0 / 255, 184.0 / 255, 92.0 / 255, 0.95};

Color bezelColor(bool isMuted) {
    return isMuted ? mutedColor : liveColor;
}

} // namespace

TouchBarController& TouchBarController::shared() {
    return Process::current().shared<TouchBarController>();
}

TouchBarController::TouchBarController()
    : touchButton(makeButton())
    , item(std::make_shared<CustomTouchBarItem>(itemIdentifier)) {
    touchButton->title = "AC";
    item->setCustomizationLabel("Microphones");
}

std::shared_ptr<TouchBarButton> TouchBarController::makeButton() {
    auto button = std::make_shared<TouchBarButton>();
    button->action = [this] { pushedStartButton(); };
    return button;
}

void TouchBarController::present() {
    auto& strip = machine().controlStrip();
    strip.showsCloseBoxWhenFrontMost(false);
    touchButton = makeButton();
    touchButton->image = machine().images().named("mic-on");
    touchButton->bezelColor = bezelColor(MuteMic::isMuted());
    item->setView(touchButton);
    strip.addSystemTrayItem(item);
    strip.setPresence(itemIdentifier, true);
}

void TouchBarController::refresh() {
    const bool isMuted = MuteMic::isMuted();
    touchButton->bezelColor = bezelColor(isMuted);
    touchButton->image = machine().images().named(isMuted ? "mic-off" : "mic-on");
    item->setView(touchButton);
}

// Only the devices are changed. The looks follow from what they then say, so a press that a device refuses
// does not show as done.
void TouchBarController::pushedStartButton() {
    machine().log().print(MuteMic::isMuted() ? "true" : "false");
    MuteMic::setMute(!MuteMic::isMuted());
}

} // namespace tavro
