#include "audio/AlertView.h"

#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/Images.h"
#include "platform/windows/Screens.h"
#include "platform/windows/WindowServer.h"

namespace tavro {

namespace {

constexpr Rect initialContent{{0, 0}, {200, 100}};
constexpr Size shownSize{200, 200};
constexpr unsigned initialStyle = WindowStyleMask::titled;

Rect mainDisplayBounds() {
    const auto display = machine().screens().mainDisplayID();
    return display ? machine().screens().displayBounds(*display) : Rect{};
}

/// The main display's screen is the first one.
Screen mainDisplayScreen() {
    const auto screens = machine().screens().screens();
    return screens.empty() ? Screen{} : screens.front();
}

} // namespace

AlertView::AlertView(bool mutestate)
    : screenSize(mainDisplayBounds())
    , mutestate(mutestate) {
    window = machine().windowServer().createOverlayWindow({.contentRect = initialContent,
                                                           .styleMask = initialStyle,
                                                           .defer = true,
                                                           .screen = mainDisplayScreen()});
    if (window)
        showWindow();
}

void AlertView::showWindow() const {
    window->setAttribute(WindowAttribute::titleHidden, true);
    window->setStyleMask(initialStyle & ~WindowStyleMask::titled);
    window->setBackgroundColor(Color::white(0, 0));
    window->setAttribute(WindowAttribute::movableByWindowBackground, true);
    window->setAttribute(WindowAttribute::ignoresMouseEvents, true);
    window->setLevel(WindowLevel::floating);
    window->setCollectionBehavior(WindowCollectionBehavior::canJoinAllSpaces |
                                  WindowCollectionBehavior::stationary);
    window->orderFrontRegardless();
    window->setAttribute(WindowAttribute::canHide, false);
    window->setFrame(frame(), true);
    window->setAttribute(WindowAttribute::hasShadow, false);
    window->setContentView(std::make_shared<HostingView<AlertView>>(*this));
}

Rect AlertView::frame() const {
    return {{screenSize.size.width * 0.5 - 100, screenSize.size.height / 6 - 50}, shownSize};
}

AlertContent AlertView::body() const {
    return {machine().images().named(mutestate ? "alert-mic-off" : "alert-mic-on"),
            mutestate ? "Mic Muted" : "Mic Unmuted"};
}

} // namespace tavro
