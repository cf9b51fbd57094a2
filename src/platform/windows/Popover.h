#pragma once

#include "platform/windows/Geometry.h"
#include "platform/windows/View.h"

#include <memory>

namespace tavro {

class StatusBarButton;

/// By the platform's numbers.
enum class PopoverBehavior { applicationDefined = 0, transient = 1 };
enum class RectEdge { minX = 0, minY = 1, maxX = 2, maxY = 3 };

/// A small window that belongs to a button of the status bar. A transient one closes when the user works
/// elsewhere, or presses Escape. It never counts as the window that the user works in. Main thread only.
class Popover {
public:
    virtual ~Popover() = default;
    /// In points.
    virtual void setContentSize(Size size) = 0;
    virtual void setBehavior(PopoverBehavior behavior) = 0;
    virtual void setAnimates(bool animates) = 0;
    virtual void setContentView(std::shared_ptr<const View> view) = 0;
    virtual bool isShown() const = 0;
    /// Shows it at a part of the button, on that edge or where the screen has room, all of it on the screen.
    virtual void show(Rect positioningRect, const StatusBarButton& button, RectEdge preferredEdge) = 0;
    /// Its window takes the keys from now on.
    virtual void makeKey() = 0;
    /// As the user closes it.
    virtual void performClose() = 0;
    /// By the program, whatever its behaviour. One that is not shown is left alone.
    virtual void close() = 0;
};

} // namespace tavro
