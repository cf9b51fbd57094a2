#include "ui/preferences/RecorderCocoa.h"

#include "toolkit/Coordinates.h"
#include "toolkit/OutlinedStyle.h"
#include "toolkit/Translation.h"

#include <QApplication>
#include <QFocusEvent>
#include <QMessageBox>
#include <QMouseEvent>
#include <QScreen>
#include <QToolButton>
#include <QWindow>

#include <algorithm>

namespace tavro {

namespace {

/// The application's style without a text cursor.
class NoCaret final : public OutlinedStyle {
public:
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        return metric == PM_TextCursorWidth ? 0 : OutlinedStyle::pixelMetric(metric, option, widget);
    }
};

QRectF frameOnScreens(const QWidget& widget) {
    return {QPointF(widget.mapToGlobal(QPoint())), QSizeF(widget.size())};
}

} // namespace

RecorderCocoa::RecorderCocoa(KeyboardShortcuts::Name name,
                             KeyboardShortcuts::ShortcutRecorder::OnChange onChange, QWidget* parent)
    : QLineEdit(parent)
    , m_recorder(*this, std::move(name), std::move(onChange)) {
    auto* style = new NoCaret;
    style->setParent(this);
    setStyle(style);
    setAlignment(Qt::AlignCenter);
    setClearButtonEnabled(true);
    findChild<QToolButton*>()->setAccessibleName(translated("Clear"));
    setFocusPolicy(Qt::ClickFocus);
    setContextMenuPolicy(Qt::NoContextMenu);
    setAcceptDrops(false);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QLineEdit::textEdited, this, [this] { m_recorder.controlTextDidChange(); });
}

// Wider than usual where the letters are large.
QSize RecorderCocoa::sizeHint() const {
    const auto height = QLineEdit::sizeHint().height();
    const int empty = fontMetrics().horizontalAdvance(placeholderText()) + height;
    const int filled =
        fontMetrics().horizontalAdvance(QLineEdit::text()) + 3 * height; // centred, with its button
    return {std::max({minimumWidth, empty, filled}), height};
}

void RecorderCocoa::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    m_recorder.becomeFirstResponder();
    m_keyboard.emplace(window()->windowHandle(), [this] { clearFocus(); });
}

void RecorderCocoa::focusOutEvent(QFocusEvent* event) {
    m_keyboard.reset();
    m_recorder.controlTextDidEndEditing();
    QLineEdit::focusOutEvent(event);
}

void RecorderCocoa::hideEvent(QHideEvent* event) {
    clearFocus();
    QLineEdit::hideEvent(event);
}

void RecorderCocoa::mousePressEvent(QMouseEvent* event) {
    event->accept();
}

void RecorderCocoa::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
}

void RecorderCocoa::mouseReleaseEvent(QMouseEvent* event) {
    event->accept();
}

void RecorderCocoa::mouseDoubleClickEvent(QMouseEvent* event) {
    event->accept();
}

void RecorderCocoa::setText(const std::string& text, const std::string& names) {
    m_names = QString::fromStdString(names);
    QLineEdit::setText(QString::fromStdString(text));
    updateGeometry();
}

void RecorderCocoa::setPlaceholder(const std::string& text) {
    const auto placeholder = translated(text);
    setPlaceholderText(placeholder);
    setAccessibleDescription(placeholder); // also while a combination is shown
}

void RecorderCocoa::clickClearButton() {
    if (QLineEdit::text().isEmpty())
        return;
    clear();
    m_recorder.controlTextDidChange();
}

void RecorderCocoa::blur() {
    clearFocus();
}

void RecorderCocoa::focus() {
    activateWindow();
    setFocus();
}

bool RecorderCocoa::contains(Point place, double margin) const {
    const auto* main = QGuiApplication::primaryScreen();
    const Coordinates coordinates(main ? main->geometry() : QRect());
    return frameOnScreens(*this)
        .adjusted(-margin, -margin, margin, margin)
        .contains(coordinates.toToolkit(place));
}

void RecorderCocoa::beep() {
    QApplication::beep();
}

void RecorderCocoa::showWarning(const std::string& message, const std::string& information) {
    QMessageBox alert(QMessageBox::Warning, QString(), translated(message), QMessageBox::Ok, window());
    alert.setInformativeText(translated(information));
    alert.setWindowModality(Qt::WindowModal);
    if (const auto icon = window()->windowIcon(); !icon.isNull())
        alert.setIconPixmap(icon.pixmap(alert.iconPixmap().size()));
    alert.exec();
}

} // namespace tavro
