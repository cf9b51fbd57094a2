#pragma once

#include "platform/linux/windows/XCovers.h"
#include "platform/windows/WindowServer.h"
#include "toolkit/Views.h"

namespace tavro {

class DesktopWallpaper;
class MainQueue;

/// Windows of the toolkit, and below and above them all our own.
class QtWindowServer final : public WindowServer {
public:
    QtWindowServer(XConnection& x, DesktopSnapshots& snapshots, DesktopWallpaper& wallpaper, Views views,
                   MainQueue& queue, Log& log);

    std::shared_ptr<OverlayWindow> createOverlayWindow(const WindowSettings& settings) override;
    std::shared_ptr<TitledWindow> createTitledWindow(const WindowSettings& settings) override;
    std::shared_ptr<Popover> createPopover() override;
    int levelForKey(WindowLevelKey key) const override;

private:
    XConnection& m_x;
    DesktopWallpaper& m_wallpaper;
    MainQueue& m_queue;
    XCovers m_covers;
    Views m_views;
};

} // namespace tavro
