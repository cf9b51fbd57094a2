#pragma once

#include "platform/windows/Popover.h"
#include "toolkit/Views.h"

#include <QWidget>
#include <xcb/xcb.h>

#include <memory>

namespace tavro {

class PanelWatch;
class XConnection;

/// A frameless window of the toolkit beside the panel. The window manager handles it, so that shortcuts and
/// screen lockers still get the keyboard; it closes when it loses the focus, and when the screens or the
/// place of the panel change.
class QtPopover final : public Popover {
public:
    QtPopover(XConnection& x, const Views& views);
    ~QtPopover() override;

    void setContentSize(Size size) override;
    void setBehavior(PopoverBehavior behavior) override { m_behavior = behavior; }
    void setAnimates(bool) override {} // window managers animate as the user wants it
    void setContentView(std::shared_ptr<const View> view) override { m_view = std::move(view); }
    bool isShown() const override;
    void show(Rect positioningRect, const StatusBarButton& button, RectEdge preferredEdge) override;
    void makeKey() override;
    void performClose() override { close(); }
    void close() override;

private:
    class Frame;

    void createFrame();
    void keepOutOfTaskbars(xcb_window_t window) const;
    void deactivated();

    XConnection& m_x;
    const Views& m_views;
    PopoverBehavior m_behavior = PopoverBehavior::applicationDefined;
    QSize m_size;
    std::shared_ptr<const View> m_view;
    xcb_window_t m_formerlyActive = XCB_NONE;
    QPoint m_place;           // asked for
    bool m_isPlaced = false;  // the window manager has been asked for it again, or the user may move it
    bool m_isClosing = false; // until it has lost the focus
    std::unique_ptr<PanelWatch> m_panel; // while it shows
    std::unique_ptr<Frame> m_frame;      // from the first time on
};

} // namespace tavro
