#pragma once

#include "platform/linux/audio/PulseHandles.h"
#include "platform/linux/audio/PulseMainLoop.h"
#include "platform/linux/audio/PulseMirror.h"
#include "platform/linux/audio/PulseSocketWatch.h"

#include <pulse/introspect.h>
#include <pulse/subscribe.h>

#include <functional>
#include <list>
#include <map>
#include <memory>

namespace tavro {

class Log;

/// The connection to the audio server, made again whenever it breaks: at once when the server's socket
/// appears anew, and besides after a while, twice as long each time and 30 seconds at most. Never starts a
/// server. What the server reports goes into the mirror, and what the mirror asks goes to the server. While a
/// server answers, nothing here wakes up by itself.
class PulseConnection final {
public:
    using Clock = PulseMainLoop::Clock;

    /// The block runs when the mirror may have changed; it must not wait for the server.
    PulseConnection(PulseMirror& mirror, Log& log, std::chrono::milliseconds firstRetryDelay,
                    std::function<void()> mirrorChanged);
    PulseConnection(const PulseConnection&) = delete;
    PulseConnection& operator=(const PulseConnection&) = delete;
    ~PulseConnection();

    /// Waits until the mirror is complete, the attempt to connect has failed, or the deadline is over.
    void waitForListing(Clock::time_point deadline);
    /// Sends it; the mirror shows it when the server has confirmed it. What the server refuses, or does not
    /// answer for a second, is a line of the log, although it may still carry out the latter.
    OSStatus setMute(AudioObjectID object, const PulseDevice& device, bool isMuted);
    /// Waits until the server has answered all that was sent, or the deadline is over.
    void waitForAnswers(Clock::time_point deadline);

private:
    /// A question that is under way, with what has come of the answer.
    struct Request {
        PulseConnection& connection;
        PulseQuestion question;
        std::vector<PulseDevice> devices;
        PulseOperation operation;
    };

    /// A flag that is on its way to the server.
    struct Write {
        PulseConnection& connection;
        AudioObjectID object = 0;
        std::string name;
        bool isMuted = false;
        PulseOperation operation;
    };

    void connect();
    bool isReady() const;
    bool hasFailed() const;
    void stateChanged();
    void ready();
    void lost();
    void subscriptionEvent(pa_subscription_event_type_t event, std::uint32_t index);
    void askQuestions();
    PulseOperation send(Request& request);
    void finished(const Request& request);
    void answered(Write& write, int succeeded);
    template <class Info>
    static void deviceInfo(pa_context* context, const Info* info, int end, void* request);
    static void serverInfo(pa_context* context, const pa_server_info* info, void* request);

    PulseMirror& m_mirror;
    Log& m_log;
    std::function<void()> m_mirrorChanged;
    PulseMainLoop m_loop;
    PulseContext m_context;
    std::map<std::uint64_t, std::unique_ptr<Request>> m_requests; // by ticket
    std::list<Write> m_writes;                                    // in their order
    QTimer m_silence;
    QTimer m_retry;
    const std::chrono::milliseconds m_firstRetryDelay;
    std::chrono::milliseconds m_retryDelay;
    PulseSocketWatch m_socketWatch;
};

} // namespace tavro
