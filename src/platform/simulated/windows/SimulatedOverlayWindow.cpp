#include "platform/simulated/windows/SimulatedOverlayWindow.h"

namespace tavro {

namespace {

const char* callOf(WindowAttribute attribute) {
    switch (attribute) {
    case WindowAttribute::titleHidden:
        return "setTitleHidden";
    case WindowAttribute::movableByWindowBackground:
        return "setMovableByWindowBackground";
    case WindowAttribute::canHide:
        return "setCanHide";
    case WindowAttribute::hasShadow:
        return "setHasShadow";
    case WindowAttribute::ignoresMouseEvents:
        return "setIgnoresMouseEvents";
    }
    return "";
}

} // namespace

void SimulatedOverlayWindow::setCollectionBehavior(unsigned behavior) {
    change("setCollectionBehavior", behavior);
}

void SimulatedOverlayWindow::setStyleMask(unsigned mask) {
    change("setStyleMask", mask);
}

void SimulatedOverlayWindow::setAttribute(WindowAttribute attribute, bool isSo) {
    auto* window = change(callOf(attribute), isSo);
    if (window && attribute == WindowAttribute::canHide)
        window->canHide = isSo;
    if (window && attribute == WindowAttribute::ignoresMouseEvents)
        window->ignoresMouseEvents = isSo;
}

void SimulatedOverlayWindow::setBackgroundColor(Color color) {
    change("setBackgroundColor", color.red, color.green, color.blue, color.alpha);
}

void SimulatedOverlayWindow::setFrame(Rect frame, bool display) {
    if (auto* window = change("setFrame", frame, display))
        window->frame = frame;
}

} // namespace tavro
