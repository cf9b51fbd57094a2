#include "platform/linux/audio/PulseMainLoop.h"

#include <poll.h>

namespace tavro {

PulseMainLoop::PulseMainLoop()
    : m_loop(pa_mainloop_new()) {
    pa_mainloop_set_poll_func(
        m_loop.get(),
        [](pollfd* descriptors, unsigned long count, int timeout, void* self) {
            return static_cast<PulseMainLoop*>(self)->poll({descriptors, count}, timeout);
        },
        this);
    m_turn.setSingleShot(true);
    QObject::connect(&m_turn, &QTimer::timeout, &m_turn, [this] { iterate(); });
    m_turn.start(0);
}

bool PulseMainLoop::runUntil(const std::function<bool()>& condition, Clock::time_point deadline) {
    m_waitsAlone = true;
    bool holds = condition();
    for (auto left = deadline - Clock::now(); !holds && left > Clock::duration::zero();
         left = deadline - Clock::now()) {
        const auto atMost = std::chrono::ceil<std::chrono::microseconds>(left);
        pa_mainloop_prepare(m_loop.get(), static_cast<int>(atMost.count()));
        pa_mainloop_poll(m_loop.get());
        pa_mainloop_dispatch(m_loop.get());
        holds = condition();
    }
    m_waitsAlone = false;
    m_turn.start(0); // the descriptors may be others now
    return holds;
}

// The toolkit has its turn after each iteration, however much the server has to say. No notifier is left to
// look at a descriptor that libpulse closes meanwhile.
void PulseMainLoop::iterate() {
    m_notifiers.clear();
    m_turn.start(0);
    pa_mainloop_iterate(m_loop.get(), true, nullptr);
}

int PulseMainLoop::poll(std::span<pollfd> descriptors, int timeout) {
    const int ready = ::poll(descriptors.data(), descriptors.size(), m_waitsAlone ? timeout : 0);
    if (ready == 0 && timeout != 0 && !m_waitsAlone)
        rest(descriptors, timeout);
    return ready;
}

// Until a descriptor is ready or the time is over. Among the descriptors is one of the loop's own, by which
// every call that gives it something to do wakes it up.
void PulseMainLoop::rest(std::span<const pollfd> descriptors, int timeout) {
    if (timeout > 0)
        m_turn.start(timeout);
    else
        m_turn.stop();
    for (const auto& each : descriptors) {
        if (each.events & POLLIN)
            watch(each.fd, QSocketNotifier::Read);
        if (each.events & POLLOUT)
            watch(each.fd, QSocketNotifier::Write);
    }
}

void PulseMainLoop::watch(int descriptor, QSocketNotifier::Type type) {
    auto* notifier = m_notifiers.emplace_back(std::make_unique<QSocketNotifier>(descriptor, type)).get();
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, [this, notifier] {
        notifier->setEnabled(false);
        m_turn.start(0); // not here: it ends the notifier
    });
}

} // namespace tavro
