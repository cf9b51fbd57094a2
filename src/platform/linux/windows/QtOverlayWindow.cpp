#include "platform/linux/windows/QtOverlayWindow.h"

#include "platform/linux/windows/DesktopLayer.h"
#include "platform/linux/windows/QtScreens.h"
#include "platform/linux/x11/XConnection.h"
#include "toolkit/Colors.h"

#include <QBackingStore>
#include <QBitmap>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QPainter>
#include <QWindow>

#include <utility>

namespace tavro {

/// Keeps what was painted, so that what other windows uncover is shown again without the view.
class QtOverlayWindow::Surface final : public QWindow {
public:
    explicit Surface(const ViewPainter& painter)
        : m_painter(painter) {
        setSurfaceType(RasterSurface);
        auto translucent = format();
        translucent.setAlphaBufferSize(8);
        setFormat(translucent);
        create();
    }

    /// Before the toolkit rounds it.
    void setExactSize(const QSizeF& size) { m_exactSize = size; }

    void setBackground(const QColor& color) {
        m_background = color;
        changed();
    }

    void setContent(std::shared_ptr<const View> view) {
        m_view = std::move(view);
        changed();
    }

    /// Where something is painted that can be seen.
    QRegion paintedRegion() const {
        QImage image(size(), QImage::Format_ARGB32_Premultiplied);
        paint(image);
        return QRegion(QBitmap::fromImage(image.createAlphaMask(Qt::ThresholdDither)));
    }

private:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::UpdateRequest && isExposed())
            flush(QRect(QPoint(0, 0), size()));
        return QWindow::event(event);
    }

    void paintEvent(QPaintEvent* event) override { flush(event->region()); }

    // What is exposed by a last pixel may be reported before the size is.
    void resizeEvent(QResizeEvent*) override { changed(); }

    void changed() {
        m_isPainted = false;
        if (isExposed())
            requestUpdate();
    }

    void flush(const QRegion& region) {
        if (!m_isPainted || m_pixels.size() != size())
            paint();
        m_pixels.flush(region);
    }

    void paint() {
        m_pixels.resize(size());
        m_pixels.beginPaint(QRect(QPoint(0, 0), size()));
        paint(*m_pixels.paintDevice());
        m_pixels.endPaint();
        m_isPainted = true;
    }

    void paint(QPaintDevice& device) const {
        QPainter painter(&device);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(QRect(QPoint(0, 0), size()), m_background);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        if (m_view)
            m_painter(*m_view, painter, {{0, 0}, m_exactSize.toSize() == size() ? m_exactSize : size()});
    }

    const ViewPainter& m_painter;
    QSizeF m_exactSize;
    QColor m_background = Qt::transparent;
    std::shared_ptr<const View> m_view;
    QBackingStore m_pixels{this};
    bool m_isPainted = false;
};

QtOverlayWindow::QtOverlayWindow(XConnection& x, DesktopLayer& desktopLayer, const ViewPainter& painter)
    : m_x(x)
    , m_desktopLayer(desktopLayer)
    , m_surface(std::make_unique<Surface>(painter))
    , m_number(static_cast<std::int64_t>(m_surface->winId())) {}

QtOverlayWindow::~QtOverlayWindow() {
    close();
}

std::int64_t QtOverlayWindow::windowNumber() const {
    return m_number;
}

void QtOverlayWindow::setAttribute(WindowAttribute attribute, bool isSo) {
    if (isSo)
        m_attributes.insert(attribute);
    else
        m_attributes.erase(attribute);
    if (attribute == WindowAttribute::hasShadow && m_surface)
        m_surface->setFlag(Qt::NoDropShadowWindowHint, !isSo); // also of one that shows already
}

void QtOverlayWindow::setBackgroundColor(Color color) {
    if (m_surface)
        m_surface->setBackground(toolkitColor(color));
}

// Before it shows, the window is still one of the window manager's, which would be asked to move it, and
// might do so after we have moved it again.
void QtOverlayWindow::setFrame(Rect frame, bool) {
    m_frame = frame;
    if (m_surface)
        m_surface->setExactSize({frame.size.width, frame.size.height});
    if (m_surface && m_surface->isVisible())
        m_surface->setGeometry(QtScreens::coordinates().toToolkit(frame).toRect());
    updateShape();
}

void QtOverlayWindow::setContentView(std::shared_ptr<const View> view) {
    if (m_surface)
        m_surface->setContent(std::move(view));
    updateShape();
}

void QtOverlayWindow::orderFront() {
    if (!m_surface)
        return;
    if (m_surface->isVisible())
        m_surface->raise();
    else if (!isInDesktopLayer())
        show();
    else if (!std::exchange(m_showPending,
                            true)) // after what else is asked of the window manager in this turn
        QMetaObject::invokeMethod(
            m_surface.get(), [this] { show(); }, Qt::QueuedConnection);
}

void QtOverlayWindow::makeKeyAndOrderFront() {
    orderFront();
    if (m_surface && !isInDesktopLayer() && !isFloating())
        m_surface->requestActivate();
}

void QtOverlayWindow::close() {
    if (!m_surface)
        return;
    m_desktopLayer.remove(static_cast<xcb_window_t>(m_number));
    m_surface.reset();
}

bool QtOverlayWindow::isInDesktopLayer() const {
    return m_level <= DesktopLayer::iconLevel + 1;
}

void QtOverlayWindow::show() {
    auto flags = m_surface->flags();
    flags.setFlag(Qt::FramelessWindowHint, !(m_styleMask & WindowStyleMask::titled));
    flags.setFlag(Qt::NoDropShadowWindowHint, !is(WindowAttribute::hasShadow));
    flags.setFlag(Qt::WindowTransparentForInput, is(WindowAttribute::ignoresMouseEvents));
    flags.setFlag(Qt::WindowDoesNotAcceptFocus, isInDesktopLayer() || isFloating());
    flags.setFlag(Qt::BypassWindowManagerHint, isFloating());
    m_surface->setFlags(flags);
    m_surface->setGeometry(QtScreens::coordinates().toToolkit(m_frame).toRect());
    const auto number = static_cast<xcb_window_t>(m_number);
    if (isInDesktopLayer())
        m_desktopLayer.add(number, m_behavior & WindowCollectionBehavior::canJoinAllSpaces,
                           m_behavior & WindowCollectionBehavior::ignoresCycle,
                           is(WindowAttribute::ignoresMouseEvents));
    m_surface->setVisible(true);
    if (isInDesktopLayer())
        m_desktopLayer.shown(number, exactPlace());
    if (isFloating())
        m_surface->raise();
    updateShape();
    // The toolkit sends what it has buffered when the next event comes from the server, which may take long.
    xcb_flush(qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection());
}

// What the toolkit paints is rounded to points: it may miss the last pixel of the screen, where what lies
// below shows, or reach into the next screen, where the window is cut.
QRect QtOverlayWindow::exactPlace() const {
    const auto scale = m_surface->devicePixelRatio();
    const auto pixels = QtScreens::framePixels(m_frame);
    if (scale == 1 || pixels.isEmpty())
        return {};
    return {pixels.topLeft(), pixels.size().boundedTo((QSizeF(m_surface->size()) * scale).toSize())};
}

// Without a compositing manager what is transparent shows as black, and has to be cut away.
void QtOverlayWindow::updateShape() {
    if (m_surface && m_surface->isVisible() && isFloating() && !m_x.hasCompositingManager())
        m_surface->setMask(m_surface->paintedRegion());
}

} // namespace tavro
