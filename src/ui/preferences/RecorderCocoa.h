#pragma once

#include "KeyboardShortcuts/RecorderField.h"
#include "KeyboardShortcuts/ShortcutRecorder.h"
#include "ui/preferences/KeyboardHold.h"

#include <QLineEdit>

#include <optional>

namespace tavro {

/// The field in which the user records the combination of a shortcut: a click, then the keys. While it has
/// the keyboard focus it keeps the keyboard to itself, so that it gets also what other programs have taken.
/// The focus leaves it after ten seconds without a key. What it is for is said by its owner, in a label or as
/// accessible name.
class RecorderCocoa final : public QLineEdit, private KeyboardShortcuts::RecorderField {
public:
    static constexpr int minimumWidth = 130;

    explicit RecorderCocoa(KeyboardShortcuts::Name name,
                           KeyboardShortcuts::ShortcutRecorder::OnChange onChange = {},
                           QWidget* parent = nullptr);

    const KeyboardShortcuts::Name& shortcutName() const { return m_recorder.shortcutName(); }
    /// Of the keys of the combination that is shown; empty where none is.
    QString keyNames() const { return QLineEdit::text().isEmpty() ? QString() : m_names; }
    void setShortcutName(const KeyboardShortcuts::Name& name) { m_recorder.setShortcutName(name); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    // The text is not to be edited, selected or replaced with the mouse.
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    std::string text() const override { return QLineEdit::text().toStdString(); }
    void setText(const std::string& text, const std::string& names) override;
    void setPlaceholder(const std::string& text) override;
    void clickClearButton() override;
    void focus() override;
    void blur() override;
    bool contains(Point place, double margin) const override;
    void beep() override;
    void showWarning(const std::string& message, const std::string& information) override;

    QString m_names; // before the recorder, which sets them
    KeyboardShortcuts::ShortcutRecorder m_recorder;
    std::optional<KeyboardHold> m_keyboard; // while it has the focus
};

} // namespace tavro
