#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <pulse/mainloop.h>

#include <chrono>
#include <functional>
#include <memory>
#include <span>
#include <vector>

struct pollfd;

namespace tavro {

/// libpulse's main loop, driven by that of the toolkit, whichever dispatcher that has; `runUntil` drives it
/// alone, while nothing else of the program runs. Main thread only.
class PulseMainLoop final {
public:
    using Clock = std::chrono::steady_clock;

    PulseMainLoop();
    PulseMainLoop(const PulseMainLoop&) = delete;
    PulseMainLoop& operator=(const PulseMainLoop&) = delete;
    /// Everything that was made through the interface must be gone.
    ~PulseMainLoop() = default;

    pa_mainloop_api* api() { return pa_mainloop_get_api(m_loop.get()); }
    /// Waits until the condition holds; whether it does at the deadline. Not from within a callback of this
    /// loop.
    bool runUntil(const std::function<bool()>& condition, Clock::time_point deadline);

private:
    struct Free {
        void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
    };

    void iterate();
    int poll(std::span<pollfd> descriptors, int timeout);
    void rest(std::span<const pollfd> descriptors, int timeout);
    void watch(int descriptor, QSocketNotifier::Type type);

    std::unique_ptr<pa_mainloop, Free> m_loop;
    bool m_waitsAlone = false;
    QTimer m_turn;                                             // the next iteration
    std::vector<std::unique_ptr<QSocketNotifier>> m_notifiers; // while there is nothing to do
};

} // namespace tavro
