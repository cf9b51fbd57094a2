#pragma once

#include "platform/linux/windows/DesktopLayer.h"
#include "platform/windows/WindowServer.h"
#include "toolkit/Views.h"

namespace tavro {

class XConnection;

/// Windows of the toolkit with EWMH and ICCCM properties.
class QtWindowServer final : public WindowServer {
public:
    QtWindowServer(XConnection& x, Views views);

    std::shared_ptr<OverlayWindow> createOverlayWindow(const WindowSettings& settings) override;
    std::shared_ptr<TitledWindow> createTitledWindow(const WindowSettings& settings) override;
    std::shared_ptr<Popover> createPopover() override;
    int levelForKey(WindowLevelKey key) const override;

private:
    XConnection& m_x;
    DesktopLayer m_desktopLayer;
    Views m_views;
};

} // namespace tavro
