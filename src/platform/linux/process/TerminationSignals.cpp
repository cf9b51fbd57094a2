#include "platform/linux/process/TerminationSignals.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace tavro {

TerminationSignals::TerminationSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, signal);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    // A handler could do next to nothing; a descriptor is read by the event loop like any other.
    m_descriptor = ::signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
}

TerminationSignals::~TerminationSignals() {
    m_notifier.reset();
    ::close(m_descriptor);
}

void TerminationSignals::start(std::function<void()> block) {
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this, block = std::move(block)] {
        signalfd_siginfo signal{};
        while (::read(m_descriptor, &signal, sizeof signal) == sizeof signal)
            block();
    });
}

} // namespace tavro
