#include "platform/linux/windows/QtWindowServer.h"

#include "platform/linux/windows/QtPopover.h"
#include "platform/linux/windows/QtTitledWindow.h"
#include "platform/linux/windows/XOverlayWindow.h"

namespace tavro {

QtWindowServer::QtWindowServer(XConnection& x, DesktopSnapshots& snapshots, DesktopWallpaper& wallpaper,
                               Views views, MainQueue& queue, Log& log)
    : m_x(x)
    , m_wallpaper(wallpaper)
    , m_queue(queue)
    , m_covers(x, snapshots, log)
    , m_views(std::move(views)) {}

std::shared_ptr<OverlayWindow> QtWindowServer::createOverlayWindow(const WindowSettings& settings) {
    auto window = std::make_shared<XOverlayWindow>(m_x, m_covers, m_wallpaper, m_views, m_queue);
    window->setFrame(settings.contentRect, false);
    return window;
}

std::shared_ptr<TitledWindow> QtWindowServer::createTitledWindow(const WindowSettings& settings) {
    return std::make_shared<QtTitledWindow>(settings.contentRect.size, m_views);
}

std::shared_ptr<Popover> QtWindowServer::createPopover() {
    return std::make_shared<QtPopover>(m_x, m_views);
}

int QtWindowServer::levelForKey(WindowLevelKey key) const {
    return key == WindowLevelKey::desktopIcon ? XCovers::iconLevel : WindowLevel::normal;
}

} // namespace tavro
