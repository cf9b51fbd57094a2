#pragma once

#include <QObject>
#include <QPointer>
#include <QWindow>

#include <functional>
#include <memory>

namespace tavro {

/// Keeps the keyboard of the whole session for one window, for as long as this lives. After ten seconds
/// without a key its owner is asked to end it.
class KeyboardHold final : public QObject {
public:
    KeyboardHold(QWindow* window, std::function<void()> whenSilent);
    KeyboardHold(const KeyboardHold&) = delete;
    KeyboardHold& operator=(const KeyboardHold&) = delete;
    ~KeyboardHold() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void waitForSilence();

    const QPointer<QWindow> m_window;
    const std::function<void()> m_whenSilent;
    std::shared_ptr<bool> m_lastKey; // one for each
};

} // namespace tavro
