#pragma once

#include "platform/windows/Window.h"
#include "platform/windows/WindowDelegate.h"

#include <string>

namespace tavro {

/// A window that the user works in: with a title bar, a close button and controls that take mouse and keys.
class TitledWindow : public Window {
public:
    virtual void setTitle(const std::string& title) = 0;
    /// Puts it into the middle of the screen.
    virtual void center() = 0;
    /// A view in the title bar, or at the top of the content where title bars are not the application's.
    virtual void addTitlebarAccessory(std::shared_ptr<const View> view) = 0;
    /// The delegate is not kept alive.
    virtual void setDelegate(std::weak_ptr<WindowDelegate> delegate) = 0;
};

} // namespace tavro
