#include "platform/linux/windows/QtWindowServer.h"

#include "platform/linux/windows/QtPopover.h"
#include "platform/linux/windows/QtTitledWindow.h"
#include "platform/linux/windows/QtWindow.h"

namespace tavro {

QtWindowServer::QtWindowServer(XConnection& x, Views views)
    : m_x(x)
    , m_desktopLayer(x)
    , m_views(std::move(views)) {}

std::shared_ptr<Window> QtWindowServer::createWindow(Rect contentRect, unsigned styleMask, BackingStore, bool,
                                                     const Screen&) {
    if (styleMask & WindowStyleMask::closable)
        return std::make_shared<QtTitledWindow>(contentRect, m_views);
    auto window = std::make_shared<QtWindow>(m_x, m_desktopLayer, m_views.paint);
    window->setStyleMask(styleMask);
    window->setFrame(contentRect, false);
    return window;
}

std::shared_ptr<Popover> QtWindowServer::createPopover() {
    return std::make_shared<QtPopover>(m_x, m_views);
}

int QtWindowServer::levelForKey(WindowLevelKey key) const {
    return key == WindowLevelKey::desktopIcon ? DesktopLayer::iconLevel : WindowLevel::normal;
}

} // namespace tavro
