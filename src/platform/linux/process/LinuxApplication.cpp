#include "platform/linux/process/LinuxApplication.h"

#include <QApplication>
#include <QSessionManager>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace tavro {

LinuxApplication::LinuxApplication(TerminationSignals& signals, std::function<void()> settle)
    : m_signals(signals)
    , m_settle(std::move(settle)) {}

int LinuxApplication::run(ApplicationDelegate& delegate) {
    m_delegate = &delegate;
    m_signals.start([] { QCoreApplication::quit(); });
    // The session may only want to be saved, or its end be cancelled: the presentation goes on until it says
    // that it is over. Should others be gone by then, the next launch puts right what outlives them.
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& session) {
        // As a login item it comes back by itself; the session would start it a second time.
        session.setRestartHint(QSessionManager::RestartNever);
        m_settle();
    });
    connect(qApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationInactive)
            m_delegate->applicationWillResignActive();
    });
    QApplication::setQuitOnLastWindowClosed(false);
    delegate.applicationDidFinishLaunching();
    const int status = QApplication::exec();
    terminate();
    m_delegate = nullptr;
    return status;
}

void LinuxApplication::terminate() {
    m_delegate->applicationWillTerminate();
    m_settle();
}

void LinuxApplication::activate(bool) {
    for (auto* window : QApplication::topLevelWidgets())
        if (window->isVisible())
            window->activateWindow();
}

// Without the toolkit's own end, which would run while its event loop is still on the stack.
void LinuxApplication::exit(int status) {
    m_settle();
    // The end below writes out no buffers.
    std::fflush(nullptr);
    std::_Exit(status);
}

void LinuxApplication::deliver(Event event, const std::function<void()>& handler) {
    const auto outer = std::exchange(m_currentEvent, event);
    handler();
    m_currentEvent = outer;
}

void LinuxApplication::reopen() {
    if (m_delegate)
        m_delegate->applicationDidReopen();
}

} // namespace tavro
