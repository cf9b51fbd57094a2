#pragma once

#include "platform/WindowServer.h"
#include "platform/linux/DesktopLayer.h"
#include "platform/linux/ViewPainter.h"

namespace tavro {

class XConnection;

/// Windows of the toolkit with EWMH and ICCCM properties.
class QtWindowServer final : public WindowServer {
public:
    QtWindowServer(XConnection& x, ViewPainter painter);

    std::shared_ptr<Window> createWindow(Rect contentRect, unsigned styleMask, BackingStore backing,
                                         bool defer, const Screen& screen) override;
    int levelForKey(WindowLevelKey key) const override;

private:
    XConnection& m_x;
    DesktopLayer m_desktopLayer;
    ViewPainter m_painter;
};

} // namespace tavro
