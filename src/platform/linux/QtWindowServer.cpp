#include "platform/linux/QtWindowServer.h"

#include "platform/linux/QtWindow.h"

namespace tavro {

QtWindowServer::QtWindowServer(XConnection& x, ViewPainter painter)
    : m_x(x)
    , m_desktopLayer(x)
    , m_painter(std::move(painter)) {}

std::shared_ptr<Window> QtWindowServer::createWindow(Rect contentRect, unsigned styleMask, BackingStore, bool,
                                                     const Screen&) {
    auto window = std::make_shared<QtWindow>(m_x, m_desktopLayer, m_painter);
    window->setStyleMask(styleMask);
    window->setFrame(contentRect, false);
    return window;
}

int QtWindowServer::levelForKey(WindowLevelKey key) const {
    switch (key) {
    case WindowLevelKey::desktopIcon:
        return DesktopLayer::iconLevel;
    }
    return 0;
}

} // namespace tavro
