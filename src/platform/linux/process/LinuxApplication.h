#pragma once

#include "platform/linux/input/EventSource.h"
#include "platform/linux/process/TerminationSignals.h"
#include "platform/process/Application.h"

#include <QObject>

#include <functional>

namespace tavro {

/// The process on the desktop. SIGTERM, SIGINT, SIGHUP and the end of the X session terminate it.
class LinuxApplication final : public QObject, public Application, public EventSource {
public:
    /// `settle` brings what was asked of the services to where it outlives the process.
    LinuxApplication(TerminationSignals& signals, std::function<void()> settle);

    int run(ApplicationDelegate& delegate) override;
    void activate(bool ignoringOtherApps) override;
    Event currentEvent() const override { return m_currentEvent; }
    void exit(int status) override;
    void deliver(Event event, const std::function<void()>& handler) override;

    /// The program was started a second time.
    void reopen();

private:
    void terminate();

    TerminationSignals& m_signals;
    std::function<void()> m_settle;
    ApplicationDelegate* m_delegate = nullptr;
    Event m_currentEvent;
};

} // namespace tavro
