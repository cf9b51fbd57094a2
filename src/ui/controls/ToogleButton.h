#pragma once

#include <QAbstractButton>

#include <functional>

class QPainter;

namespace tavro {

/// A control that shows a state and hands its taps on, whoever makes them: mouse, keyboard or assistive
/// technology. The state follows from the product, not from the tap.
class ToogleButton : public QAbstractButton {
public:
    /// Around the content, in points: room for the ring that shows the keyboard's focus.
    static constexpr int margin = 6;

    ToogleButton(const QString& label, std::function<void()> tapped, QWidget* parent);

    /// Shows the product's state.
    void setIsOn(bool isOn);

protected:
    void nextCheckState() override {}
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    /// Paints the content into its area.
    virtual void paint(QPainter& painter, const QRectF& area) = 0;
    static QSize withMargin(QSizeF content);
    /// A place in the button, at the other end where the language is written from right to left.
    QRectF mirrored(const QRectF& place) const;
    /// The text, smaller where it would be too wide.
    void paintLabel(QPainter& painter, const QRectF& area) const;
    /// Of the ring that shows the keyboard's focus.
    virtual QColor focusColor() const;

private:
    void keepState();

    bool m_isOn = false;
    bool m_showsFocus = false;
};

} // namespace tavro
