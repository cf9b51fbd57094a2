#include "platform/linux/windows/QtTitledWindow.h"

#include "toolkit/Icons.h"
#include "toolkit/KeepOnScreen.h"
#include "toolkit/WindowRole.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QScreen>

#include <algorithm>

namespace tavro {

class QtTitledWindow::Frame final : public QWidget {
public:
    Frame(QtTitledWindow& window, QSize contentSize)
        : m_window(window)
        , m_contentSize(contentSize) {
        setAttribute(Qt::WA_QuitOnClose, false);
        announceAsWindow(*this);
        setFixedSize(contentSize);
        setWindowIcon(toolkitIcon({"tavropro"}));
        keepOnScreen(*this);
        connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
            if (!now && before && isAncestorOf(before))
                m_formerFocus = before;
        });
    }
    // Its content loses the focus when it goes.
    ~Frame() override { disconnect(qApp, nullptr, this, nullptr); }

private:
    void closeEvent(QCloseEvent* event) override {
        event->accept();
        if (const auto delegate = m_window.m_delegate.lock())
            delegate->windowWillClose();
        m_window.close();
    }

    void keyPressEvent(QKeyEvent* event) override {
        if (event->matches(QKeySequence::Close))
            close();
        else
            QWidget::keyPressEvent(event);
    }

    // Grows where the content needs more room, and shrinks again.
    bool event(QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest)
            setFixedSize(m_contentSize.expandedTo(layout()->minimumSize()));
        return QWidget::event(event);
    }

    // Where no widget has the focus, keys go on from the one that had it.
    bool focusNextPrevChild(bool next) override {
        auto* widget = focusWidget() ? nullptr : m_formerFocus.data();
        if (!widget)
            return QWidget::focusNextPrevChild(next);
        do
            widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
        while (widget != m_formerFocus && !(widget->focusPolicy() & Qt::TabFocus && widget->isVisible()));
        widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }

    QtTitledWindow& m_window;
    const QSize m_contentSize;
    QPointer<QWidget> m_formerFocus;
};

QtTitledWindow::QtTitledWindow(Size contentSize, const Views& views)
    : m_views(views)
    , m_frame(std::make_unique<Frame>(*this, QSizeF(contentSize.width, contentSize.height).toSize()))
    , m_stack(new QVBoxLayout(m_frame.get())) {
    m_stack->setContentsMargins(0, 0, 0, 0);
    m_stack->setSpacing(0);
}

QtTitledWindow::~QtTitledWindow() = default;

std::int64_t QtTitledWindow::windowNumber() const {
    return m_frame ? static_cast<std::int64_t>(m_frame->winId()) : 0;
}

// The toolkit takes a window off the screen whose flags change.
void QtTitledWindow::setLevel(int level) {
    if (!m_frame)
        return;
    const bool isShown = m_frame->isVisible();
    m_frame->setWindowFlag(Qt::WindowStaysOnTopHint, level >= WindowLevel::floating);
    if (isShown)
        m_frame->show();
}

void QtTitledWindow::setTitle(const std::string& title) {
    if (m_frame)
        m_frame->setWindowTitle(QString::fromStdString(title));
}

void QtTitledWindow::center() {
    if (!m_frame)
        return;
    auto place = m_frame->geometry();
    place.moveCenter(QGuiApplication::primaryScreen()->availableGeometry().center());
    m_frame->setGeometry(place);
}

void QtTitledWindow::setContentView(std::shared_ptr<const View> view) {
    if (auto content = m_frame ? m_views.makeWidget(*view) : nullptr)
        m_stack->addWidget(content.release());
}

// Whoever goes by keys or by ear begins with it, too.
void QtTitledWindow::addTitlebarAccessory(std::shared_ptr<const View> view) {
    auto accessory = m_frame ? m_views.makeWidget(*view) : nullptr;
    if (!accessory)
        return;
    m_stack->insertWidget(0, accessory.get());
    accessory->lower();
    const auto controls = accessory.release()->findChildren<QWidget*>();
    const auto first =
        std::ranges::find_if(controls, [](const auto* child) { return child->focusPolicy() & Qt::TabFocus; });
    if (first != controls.end())
        (*first)->setFocus();
}

void QtTitledWindow::orderFront() {
    if (!m_frame)
        return;
    m_frame->setWindowState(m_frame->windowState() & ~Qt::WindowMinimized);
    m_frame->show();
    m_frame->raise();
}

void QtTitledWindow::makeKeyAndOrderFront() {
    orderFront();
    if (m_frame)
        m_frame->activateWindow();
}

// It may be an event of the window itself that closes it.
void QtTitledWindow::close() {
    if (!m_frame)
        return;
    m_frame->hide();
    m_frame.release()->deleteLater();
}

} // namespace tavro
