#include "platform/linux/windows/QtPopover.h"

#include "platform/linux/windows/Panels.h"
#include "platform/linux/windows/QtScreens.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/menubar/StatusBar.h"
#include "toolkit/ScreenChanges.h"
#include "toolkit/WindowRole.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <QVBoxLayout>

#include <array>
#include <chrono>

namespace tavro {

namespace {
constexpr double cornerRadius = 10;
} // namespace

/// The window itself: its corners are round, with a compositing manager and without.
class QtPopover::Frame final : public QWidget {
public:
    explicit Frame(QtPopover& popover)
        : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
        , m_popover(popover) {
        setAttribute(Qt::WA_TranslucentBackground);
        setAttribute(Qt::WA_QuitOnClose, false);
        announceAsWindow(*this);
    }

    /// What is transparent would show as black without one.
    void setHasCompositingManager(bool hasOne) {
        if (hasOne)
            clearMask();
        else
            setMask(QRegion(outline().toFillPolygon().toPolygon()));
    }

private:
    QPainterPath outline() const {
        QPainterPath path;
        path.addRoundedRect(QRectF(rect()), cornerRadius, cornerRadius);
        return path;
    }

    bool event(QEvent* event) override {
        if (event->type() == QEvent::WindowDeactivate)
            m_popover.deactivated();
        else if (event->type() == QEvent::WindowActivate)
            m_popover.m_isPlaced = true;
        return QWidget::event(event);
    }

    // i3 takes off a title bar that was never there, and leaves the window as much too low.
    void moveEvent(QMoveEvent* event) override {
        if (isVisible() && event->pos() != m_popover.m_place && !std::exchange(m_popover.m_isPlaced, true))
            QTimer::singleShot(0, this, [this] { move(m_popover.m_place); });
    }

    void hideEvent(QHideEvent*) override { m_popover.m_panel.reset(); }

    // Opaque: for others the toolkit starts threads, whose end would wake the process half a minute later.
    QColor edgeColor() const {
        const auto area = palette().color(QPalette::Window), text = palette().color(QPalette::WindowText);
        const auto mixed = [](int most, int some) { return (3 * most + some) / 4; };
        return {mixed(area.red(), text.red()), mixed(area.green(), text.green()),
                mixed(area.blue(), text.blue())};
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(outline(), palette().window());
        painter.setPen(edgeColor());
        constexpr double half = 0.5;
        painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), cornerRadius,
                                cornerRadius);
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape && m_popover.m_behavior == PopoverBehavior::transient)
            m_popover.performClose();
        else
            QWidget::keyPressEvent(event);
    }

    QtPopover& m_popover;
};

QtPopover::QtPopover(XConnection& x, const Views& views)
    : m_x(x)
    , m_views(views) {}

QtPopover::~QtPopover() = default;

void QtPopover::setContentSize(Size size) {
    m_size = QSizeF(size.width, size.height).toSize();
}

bool QtPopover::isShown() const {
    return m_frame && m_frame->isVisible() && !m_isClosing;
}

void QtPopover::createFrame() {
    m_frame = std::make_unique<Frame>(*this);
    onScreenChange(*m_frame, [this] { close(); });
    keepOutOfTaskbars(static_cast<xcb_window_t>(m_frame->winId()));
    auto* layout = new QVBoxLayout(m_frame.get());
    layout->setContentsMargins(0, 0, 0, 0);
    if (auto content = m_view ? m_views.makeWidget(*m_view) : nullptr)
        layout->addWidget(content.release());
}

// Before it shows; the toolkit, which sets such states then, adds to those that are there. Some panels list
// windows of every type.
void QtPopover::keepOutOfTaskbars(xcb_window_t window) const {
    const auto& atoms = m_x.atoms();
    const std::array states{atoms.netWmStateSkipTaskbar, atoms.netWmStateSkipPager};
    xcb_change_property(m_x.raw(), XCB_PROP_MODE_REPLACE, window, atoms.netWmState, XCB_ATOM_ATOM, 32,
                        states.size(), states.data());
    m_x.roundTrip();
}

// The panel has room on one side only, whatever edge is asked for.
void QtPopover::show(Rect, const StatusBarButton& button, RectEdge) {
    if (!m_frame)
        createFrame();
    const auto place = QtScreens::coordinates().toToolkit(button.positionOnScreen()).toPoint();
    const auto beside = besidePanel(m_x, place, m_size);
    m_frame->setFixedSize(beside.size());
    m_frame->move(m_place = beside.topLeft());
    m_isPlaced = false;
    m_panel = std::make_unique<PanelWatch>(m_x, place, [this] { close(); });
    m_formerlyActive = m_x.value(m_x.request(m_x.root(), m_x.atoms().netActiveWindow)).value_or(XCB_NONE);
    m_frame->setHasCompositingManager(m_x.hasCompositingManager());
    m_isClosing = false;
    m_frame->show();
}

void QtPopover::makeKey() {
    if (!isShown())
        return;
    m_frame->raise();
    m_frame->activateWindow();
}

// When the window goes, the window manager may choose another one than the user was in, so that one is made
// active first. A window manager that does not do it does not hold up the end.
void QtPopover::close() {
    constexpr std::uint32_t fromPager = 2;
    constexpr std::chrono::milliseconds longestWait{150};
    if (!isShown())
        return;
    if (!m_frame->isActiveWindow() || m_formerlyActive == XCB_NONE)
        return m_frame->hide();
    m_isClosing = true;
    m_x.askWindowManager(m_formerlyActive, m_x.atoms().netActiveWindow,
                         {fromPager, XCB_CURRENT_TIME, XCB_NONE});
    m_x.flush();
    QTimer::singleShot(longestWait, m_frame.get(), [this] {
        if (m_isClosing)
            m_frame->hide();
    });
}

void QtPopover::deactivated() {
    if (m_isClosing || m_behavior == PopoverBehavior::transient)
        m_frame->hide();
}

} // namespace tavro
