#pragma once

#include "platform/windows/Geometry.h"

#include <string>

namespace tavro::KeyboardShortcuts {

/// What a recorder's text field does on the screen. The field notifies the recorder when it gets the keyboard
/// focus, when it loses it, and when its clear button was clicked.
class RecorderField {
public:
    virtual ~RecorderField() = default;

    virtual std::string text() const = 0;
    /// The clear button is there exactly while there is a text, which is read out by its names.
    virtual void setText(const std::string& text, const std::string& names) = 0;
    virtual void setPlaceholder(const std::string& text) = 0;
    /// As if the clear button had been clicked; nothing where there is none.
    virtual void clickClearButton() = 0;

    /// Takes the keyboard focus, or gives it away: its window then has none.
    virtual void focus() = 0;
    virtual void blur() = 0;
    /// Whether a place on the screens is in the field, grown by a margin on every side.
    virtual bool contains(Point place, double margin) const = 0;

    virtual void beep() = 0;
    /// Returns when the user has dismissed it; the field may be gone then.
    virtual void showWarning(const std::string& message, const std::string& information) = 0;
};

} // namespace tavro::KeyboardShortcuts
