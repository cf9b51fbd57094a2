#pragma once

#include <memory>

namespace tavro {

class CustomTouchBarItem;
struct TouchBarButton;

/// The microphone button that stands in the control strip while presentation mode is on: red while the
/// microphone is muted, else green. Main thread only.
class TouchBarController {
public:
    static constexpr const char* itemIdentifier = "tesk.startItem";

    static TouchBarController& shared();

    TouchBarController();
    TouchBarController(const TouchBarController&) = delete;
    TouchBarController& operator=(const TouchBarController&) = delete;

    /// Puts a new button into the control strip. Its image is the one of a live microphone until `refresh`.
    void present();
    /// Brings the button's look up to the state of the microphone.
    void refresh();
    /// The button's action: mutes or unmutes. The look follows with the change that this brings about.
    void pushedStartButton();

    std::shared_ptr<TouchBarButton> touchButton;
    const std::shared_ptr<CustomTouchBarItem> item;

private:
    std::shared_ptr<TouchBarButton> makeButton();
};

} // namespace tavro
