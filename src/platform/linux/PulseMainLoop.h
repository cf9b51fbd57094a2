#pragma once

#include <QSocketNotifier>
#include <QTimer>
#include <pulse/mainloop-api.h>

#include <chrono>
#include <functional>
#include <list>
#include <memory>
#include <optional>

namespace tavro {

/// The main loop that libpulse runs on. The toolkit's event loop drives it, whichever dispatcher that has;
/// `runUntil` drives it alone, while nothing else of the program runs. Main thread only.
///
/// One descriptor of the kernel stands for all of libpulse's, so that the toolkit has one notifier to look
/// after.
class PulseMainLoop final {
public:
    using Clock = std::chrono::steady_clock;

    PulseMainLoop();
    PulseMainLoop(const PulseMainLoop&) = delete;
    PulseMainLoop& operator=(const PulseMainLoop&) = delete;
    /// Everything that was made through the interface must be gone.
    ~PulseMainLoop();

    pa_mainloop_api* api() { return &m_api; }
    /// Waits until the condition holds; whether it does at the deadline. Not from within a callback of this
    /// loop.
    bool runUntil(const std::function<bool()>& condition, Clock::time_point deadline);

private:
    template <class Event>
    using Events = std::list<std::unique_ptr<Event>>;

    pa_mainloop_api makeApi();
    pa_io_event* watch(int descriptor, pa_io_event_flags_t flags, pa_io_event_cb_t callback, void* userdata);
    void setFlags(pa_io_event& event, pa_io_event_flags_t flags);
    void unwatch(pa_io_event& event);
    pa_time_event* addTimer(const timeval* time, pa_time_event_cb_t callback, void* userdata);
    void setTime(pa_time_event& event, const timeval* time);
    pa_defer_event* addDeferred(pa_defer_event_cb_t callback, void* userdata);
    template <class Event>
    void release(Event& event);

    void iterate(Clock::duration atMost);
    bool runDeferred();
    void runReady(Clock::duration atMost);
    void runTimers();
    template <class Event>
    void sweep(Events<Event>& events);
    std::optional<Clock::time_point> nextDueTime() const;
    void schedule();

    pa_mainloop_api m_api;
    int m_descriptor;
    QSocketNotifier m_notifier;
    QTimer m_timer;
    bool m_isIterating = false;
    Events<pa_io_event> m_watched;
    Events<pa_time_event> m_timers;
    Events<pa_defer_event> m_deferred;
};

} // namespace tavro
