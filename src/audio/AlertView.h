#pragma once

#include "audio/AlertContent.h"
#include "platform/windows/Geometry.h"

#include <memory>

namespace tavro {

class OverlayWindow;

/// One indicator of the microphone's state: a click-through window low on the main display. The record is
/// also what the window's content is computed from; copies share the window.
struct AlertView {
    /// Makes the window and shows it, without activating the application.
    explicit AlertView(bool mutestate);

    AlertContent body() const;

    /// Null when the window server refused one.
    std::shared_ptr<OverlayWindow> window;
    /// The bounds of the main display.
    Rect screenSize;
    /// Whether it announces the microphone as muted.
    bool mutestate = false;

private:
    void showWindow() const;
    Rect frame() const;
};

} // namespace tavro
