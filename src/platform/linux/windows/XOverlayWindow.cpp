#include "platform/linux/windows/XOverlayWindow.h"

#include "platform/linux/windows/DesktopWallpaper.h"
#include "platform/linux/windows/QtScreens.h"
#include "platform/linux/windows/XCovers.h"
#include "toolkit/Colors.h"

#include <QBitmap>
#include <QPainter>
#include <QRegion>

namespace tavro {

XOverlayWindow::XOverlayWindow(XConnection& x, XCovers& covers, DesktopWallpaper& wallpaper,
                               const Views& views, MainQueue& queue)
    : m_x(x)
    , m_covers(covers)
    , m_wallpaper(wallpaper)
    , m_views(views)
    , m_number(xcb_generate_id(x.raw()))
    , m_showing(queue, [this] { show(); }) {}

XOverlayWindow::~XOverlayWindow() {
    close();
}

void XOverlayWindow::setAttribute(WindowAttribute attribute, bool isSo) {
    if (isSo)
        m_attributes.insert(attribute);
    else
        m_attributes.erase(attribute);
    if (attribute == WindowAttribute::hasShadow)
        updateShadow();
}

void XOverlayWindow::setBackgroundColor(Color color) {
    m_background = color;
    render();
}

void XOverlayWindow::setFrame(Rect frame, bool) {
    m_frame = frame;
    if (m_stage == Stage::shown)
        show();
}

void XOverlayWindow::setContentView(std::shared_ptr<const View> view) {
    if (m_stage == Stage::closed)
        return;
    m_view = std::move(view);
    render();
}

// The server paints a cover for some milliseconds, so what the window manager is to be told in this turn goes
// out before.
void XOverlayWindow::orderFront() {
    if (m_stage != Stage::made)
        return;
    if (isCover())
        m_showing.schedule();
    else
        show();
}

void XOverlayWindow::close() {
    m_stage = Stage::closed;
    m_wallpaperChanges = {};
    m_covers.remove(m_number);
    m_above.reset();
    m_view.reset();
    m_x.flush();
}

void XOverlayWindow::show() {
    if (m_stage == Stage::closed || place().isEmpty())
        return;
    m_stage = Stage::shown;
    if (!isCover())
        return showAbove();
    m_covers.show(m_number, place(),
                  {.passesClicks = is(WindowAttribute::ignoresMouseEvents),
                   .onAllWorkspaces = (m_behavior & WindowCollectionBehavior::canJoinAllSpaces) != 0,
                   .skipsSwitchers = (m_behavior & WindowCollectionBehavior::ignoresCycle) != 0},
                  coverPicture());
    m_wallpaperChanges = m_wallpaper.onChange([this] { render(); });
}

void XOverlayWindow::showAbove() {
    m_isTranslucent = m_x.hasCompositingManager();
    m_above.reset();
    m_above = std::make_unique<PaintedWindow>(
        m_x, m_number, m_isTranslucent ? PaintedWindow::Kind::translucent : PaintedWindow::Kind::unmanaged,
        m_x.root(), place());
    if (is(WindowAttribute::ignoresMouseEvents))
        PaintedWindow::passClicks(m_x, m_number);
    updateShadow();
    renderAbove();
    m_above->show();
    m_x.flush();
}

// One whose screen has gone keeps what it shows.
void XOverlayWindow::render() {
    if (m_stage != Stage::shown || place().isEmpty())
        return;
    if (isCover())
        m_covers.setPicture(m_number, coverPicture());
    else
        renderAbove();
    m_x.flush();
}

// Without a compositing manager what is transparent would show as black, and is cut away.
void XOverlayWindow::renderAbove() {
    const auto content = m_view ? m_views.content(*m_view) : ViewContent{};
    const auto image = drawn(content, QImage::Format_ARGB32_Premultiplied);
    if (m_isTranslucent)
        return m_above->setBackground(XPixmap(m_x, image));
    m_above->setShape(QRegion(QBitmap::fromImage(image.createAlphaMask(Qt::ThresholdDither))));
    const XPixmap opaque(m_x, image.convertToFormat(QImage::Format_RGB32));
    m_above->setBackground(XPixmap(m_x, opaque, image.rect(), m_x.screen()->root_depth));
}

std::shared_ptr<const XPixmap> XOverlayWindow::coverPicture() const {
    const auto content = m_view ? m_views.content(*m_view) : ViewContent{};
    if (const auto* onServer = dynamic_cast<const XServerImage*>(content.onServer.get()))
        return std::make_shared<const XPixmap>(m_x, *onServer);
    return std::make_shared<const XPixmap>(m_x, drawn(content, QImage::Format_RGB32));
}

/// As many pixels as the place has; the view draws in points.
QImage XOverlayWindow::drawn(const ViewContent& content, QImage::Format format) const {
    QImage image(place().size(), format);
    const double scale = image.width() / m_frame.size.width;
    image.setDevicePixelRatio(scale);
    image.fill(toolkitColor(m_background));
    QPainter painter(&image);
    if (content.draw)
        content.draw(painter, {0, 0, image.width() / scale, image.height() / scale});
    return image;
}

void XOverlayWindow::updateShadow() {
    if (m_above) // the property that compositing managers have agreed on, whichever draws shadows
        m_above->setValues(m_x.atoms().comptonShadow, XCB_ATOM_CARDINAL,
                           {is(WindowAttribute::hasShadow) ? 1u : 0u});
}

QRect XOverlayWindow::place() const {
    return QtScreens::framePixels(m_frame);
}

bool XOverlayWindow::isCover() const {
    return m_level <= XCovers::iconLevel + 1;
}

} // namespace tavro
