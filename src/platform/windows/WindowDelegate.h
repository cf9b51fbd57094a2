#pragma once

namespace tavro {

/// What a window with a close button reports of itself.
class WindowDelegate {
public:
    virtual ~WindowDelegate() = default;
    /// The user closes the window.
    virtual void windowWillClose() = 0;
};

} // namespace tavro
