#include "ui/preferences/KeyboardHold.h"

#include "platform/process/Machine.h"
#include "platform/process/MainQueue.h"
#include "platform/process/Process.h"

#include <QCoreApplication>
#include <QEvent>

namespace tavro {

namespace {
constexpr MainQueue::Duration longestSilence{10};
}

KeyboardHold::KeyboardHold(QWindow* window, std::function<void()> whenSilent)
    : m_window(window)
    , m_whenSilent(std::move(whenSilent)) {
    if (m_window)
        m_window->setKeyboardGrabEnabled(true);
    qApp->installEventFilter(this); // which sees also keys that others keep from the widgets
    waitForSilence();
}

KeyboardHold::~KeyboardHold() {
    if (m_window)
        m_window->setKeyboardGrabEnabled(false);
}

bool KeyboardHold::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::KeyPress)
        waitForSilence();
    return false;
}

void KeyboardHold::waitForSilence() {
    m_lastKey = std::make_shared<bool>(true);
    machine().mainQueue().asyncAfter(longestSilence,
                                     [key = std::weak_ptr(m_lastKey), whenSilent = m_whenSilent] {
                                         if (!key.expired())
                                             whenSilent();
                                     });
}

} // namespace tavro
