#include "platform/linux/PulseMainLoop.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <fcntl.h>
#include <sys/epoll.h>
#include <sys/time.h>
#include <unistd.h>

// libpulse leaves these three types to whoever offers a main loop. One that libpulse has freed stays until
// the end of the iteration, since the iteration may be about to look at it.

struct pa_io_event {
    tavro::PulseMainLoop* loop;
    pa_io_event_cb_t callback;
    void* userdata;
    pa_io_event_destroy_cb_t destroyed = nullptr;
    bool isFreed = false;
    int descriptor = -1;
    int ownDescriptor = -1; // of the same file
    bool isWatched = false;
};

struct pa_time_event {
    tavro::PulseMainLoop* loop;
    pa_time_event_cb_t callback;
    void* userdata;
    pa_time_event_destroy_cb_t destroyed = nullptr;
    bool isFreed = false;
    std::optional<tavro::PulseMainLoop::Clock::time_point> due{};
    timeval time{}; // as libpulse gave it
};

struct pa_defer_event {
    tavro::PulseMainLoop* loop;
    pa_defer_event_cb_t callback;
    void* userdata;
    pa_defer_event_destroy_cb_t destroyed = nullptr;
    bool isFreed = false;
    bool isEnabled = true;
};

namespace tavro {

namespace {

PulseMainLoop& loopOf(const pa_mainloop_api* api) {
    return *static_cast<PulseMainLoop*>(api->userdata);
}

// libpulse speaks of the wall clock to main loops that are not its own. Only the distance from now counts, so
// that setting the clock does not disturb a timer that runs.
PulseMainLoop::Clock::time_point steady(const timeval& time) {
    timeval now{};
    ::gettimeofday(&now, nullptr);
    return PulseMainLoop::Clock::now() + std::chrono::seconds(time.tv_sec - now.tv_sec) +
           std::chrono::microseconds(time.tv_usec - now.tv_usec);
}

std::uint32_t toKernel(pa_io_event_flags_t flags) {
    return (flags & PA_IO_EVENT_INPUT ? static_cast<std::uint32_t>(EPOLLIN) : 0u) |
           (flags & PA_IO_EVENT_OUTPUT ? static_cast<std::uint32_t>(EPOLLOUT) : 0u);
}

pa_io_event_flags_t fromKernel(std::uint32_t events) {
    return static_cast<pa_io_event_flags_t>(
        (events & EPOLLIN ? PA_IO_EVENT_INPUT : 0) | (events & EPOLLOUT ? PA_IO_EVENT_OUTPUT : 0) |
        (events & EPOLLHUP ? PA_IO_EVENT_HANGUP : 0) | (events & EPOLLERR ? PA_IO_EVENT_ERROR : 0));
}

int roundedUp(PulseMainLoop::Clock::duration duration) {
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(duration);
    return static_cast<int>(std::max(milliseconds, std::chrono::milliseconds(0)).count());
}

} // namespace

PulseMainLoop::PulseMainLoop()
    : m_api(makeApi())
    , m_descriptor(::epoll_create1(EPOLL_CLOEXEC))
    , m_notifier(m_descriptor, QSocketNotifier::Read) {
    m_timer.setSingleShot(true);
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier,
                     [this] { iterate(Clock::duration::zero()); });
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { iterate(Clock::duration::zero()); });
}

PulseMainLoop::~PulseMainLoop() {
    sweep(m_watched);
    sweep(m_timers);
    sweep(m_deferred);
    assert(m_watched.empty() && m_timers.empty() && m_deferred.empty());
    m_notifier.setEnabled(false);
    ::close(m_descriptor);
}

pa_mainloop_api PulseMainLoop::makeApi() {
    pa_mainloop_api api{};
    api.userdata = this;
    api.io_new = [](pa_mainloop_api* self, int descriptor, pa_io_event_flags_t flags,
                    pa_io_event_cb_t callback,
                    void* userdata) { return loopOf(self).watch(descriptor, flags, callback, userdata); };
    api.io_enable = [](pa_io_event* event, pa_io_event_flags_t flags) {
        event->loop->setFlags(*event, flags);
    };
    api.io_free = [](pa_io_event* event) {
        event->loop->unwatch(*event);
        event->loop->release(*event);
    };
    api.io_set_destroy = [](pa_io_event* event, pa_io_event_destroy_cb_t block) { event->destroyed = block; };
    api.time_new = [](pa_mainloop_api* self, const timeval* time, pa_time_event_cb_t callback,
                      void* userdata) { return loopOf(self).addTimer(time, callback, userdata); };
    api.time_restart = [](pa_time_event* event, const timeval* time) { event->loop->setTime(*event, time); };
    api.time_free = [](pa_time_event* event) { event->loop->release(*event); };
    api.time_set_destroy = [](pa_time_event* event, pa_time_event_destroy_cb_t block) {
        event->destroyed = block;
    };
    api.defer_new = [](pa_mainloop_api* self, pa_defer_event_cb_t callback, void* userdata) {
        return loopOf(self).addDeferred(callback, userdata);
    };
    api.defer_enable = [](pa_defer_event* event, int isEnabled) {
        event->isEnabled = isEnabled != 0;
        event->loop->schedule();
    };
    api.defer_free = [](pa_defer_event* event) { event->loop->release(*event); };
    api.defer_set_destroy = [](pa_defer_event* event, pa_defer_event_destroy_cb_t block) {
        event->destroyed = block;
    };
    api.quit = [](pa_mainloop_api*, int) {}; // clients do not end the program
    return api;
}

// libpulse watches a socket anew before it ends the watch for the end of connecting, and the kernel wants
// each descriptor once.
pa_io_event* PulseMainLoop::watch(int descriptor, pa_io_event_flags_t flags, pa_io_event_cb_t callback,
                                  void* userdata) {
    auto& event =
        *m_watched.emplace_back(std::make_unique<pa_io_event>(pa_io_event{this, callback, userdata}));
    event.descriptor = descriptor;
    event.ownDescriptor = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
    setFlags(event, flags);
    return &event;
}

void PulseMainLoop::unwatch(pa_io_event& event) {
    setFlags(event, PA_IO_EVENT_NULL);
    ::close(event.ownDescriptor);
}

// One without flags is taken out altogether: the kernel would go on telling of a hang-up.
void PulseMainLoop::setFlags(pa_io_event& event, pa_io_event_flags_t flags) {
    epoll_event description{};
    description.events = toKernel(flags);
    description.data.ptr = &event;
    const bool wantsIt = flags != PA_IO_EVENT_NULL;
    if (wantsIt || event.isWatched)
        ::epoll_ctl(m_descriptor,
                    !wantsIt          ? EPOLL_CTL_DEL
                    : event.isWatched ? EPOLL_CTL_MOD
                                      : EPOLL_CTL_ADD,
                    event.ownDescriptor, &description);
    event.isWatched = wantsIt;
}

pa_time_event* PulseMainLoop::addTimer(const timeval* time, pa_time_event_cb_t callback, void* userdata) {
    auto& event =
        *m_timers.emplace_back(std::make_unique<pa_time_event>(pa_time_event{this, callback, userdata}));
    setTime(event, time);
    return &event;
}

void PulseMainLoop::setTime(pa_time_event& event, const timeval* time) {
    event.time = time ? *time : timeval{};
    event.due = time ? std::optional(steady(*time)) : std::nullopt;
    schedule();
}

pa_defer_event* PulseMainLoop::addDeferred(pa_defer_event_cb_t callback, void* userdata) {
    auto& event =
        *m_deferred.emplace_back(std::make_unique<pa_defer_event>(pa_defer_event{this, callback, userdata}));
    schedule();
    return &event;
}

template <class Event>
void PulseMainLoop::release(Event& event) {
    event.isFreed = true;
    schedule();
}

bool PulseMainLoop::runUntil(const std::function<bool()>& condition, Clock::time_point deadline) {
    assert(!m_isIterating);
    while (!condition()) {
        const auto left = deadline - Clock::now();
        if (left <= Clock::duration::zero())
            return false;
        iterate(left);
    }
    return true;
}

// As libpulse's own main loop does it: what is deferred comes first, alone.
void PulseMainLoop::iterate(Clock::duration atMost) {
    if (m_isIterating)
        return;
    m_isIterating = true;
    if (!runDeferred()) {
        runReady(atMost);
        runTimers();
    }
    sweep(m_watched);
    sweep(m_timers);
    sweep(m_deferred);
    m_isIterating = false;
    schedule();
}

bool PulseMainLoop::runDeferred() {
    bool any = false;
    for (const auto& event : m_deferred)
        if (event->isEnabled && !event->isFreed) {
            any = true;
            event->callback(&m_api, event.get(), event->userdata);
        }
    return any;
}

void PulseMainLoop::runReady(Clock::duration atMost) {
    if (const auto due = nextDueTime())
        atMost = std::min(atMost, *due - Clock::now());
    std::array<epoll_event, 16> ready{};
    const int count =
        ::epoll_wait(m_descriptor, ready.data(), static_cast<int>(ready.size()), roundedUp(atMost));
    for (int i = 0; i < count; ++i) {
        const auto& [events, data] = ready.at(static_cast<std::size_t>(i));
        auto* event = static_cast<pa_io_event*>(data.ptr);
        if (event->isWatched)
            event->callback(&m_api, event, event->descriptor, fromKernel(events), event->userdata);
    }
}

void PulseMainLoop::runTimers() {
    const auto now = Clock::now();
    for (const auto& event : m_timers)
        if (!event->isFreed && event->due && *event->due <= now) {
            event->due.reset();
            event->callback(&m_api, event.get(), &event->time, event->userdata);
        }
}

template <class Event>
void PulseMainLoop::sweep(Events<Event>& events) {
    events.remove_if([this](const auto& event) {
        if (event->isFreed && event->destroyed)
            event->destroyed(&m_api, event.get(), event->userdata);
        return event->isFreed;
    });
}

std::optional<PulseMainLoop::Clock::time_point> PulseMainLoop::nextDueTime() const {
    std::optional<Clock::time_point> next;
    for (const auto& event : m_timers)
        if (!event->isFreed && event->due && (!next || *event->due < *next))
            next = event->due;
    return next;
}

// Descriptors wake the toolkit by themselves; its timer stands for all the rest.
void PulseMainLoop::schedule() {
    if (m_isIterating)
        return; // at its end
    const bool isDeferred = std::ranges::any_of(
        m_deferred, [](const auto& event) { return event->isEnabled && !event->isFreed; });
    if (isDeferred)
        m_timer.start(0);
    else if (const auto due = nextDueTime())
        m_timer.start(roundedUp(*due - Clock::now()));
    else
        m_timer.stop();
}

} // namespace tavro
