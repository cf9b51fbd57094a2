#include "platform/linux/audio/PulseConnection.h"

#include "platform/process/Log.h"

#include <pulse/error.h>
#include <pulse/volume.h>

#include <algorithm>

namespace tavro {

namespace {

constexpr std::chrono::milliseconds longestRetryDelay{30'000}, longestSilence{1000};

PulseDeviceKind kindOf(const pa_sink_info&) {
    return PulseDeviceKind::sink;
}

PulseDeviceKind kindOf(const pa_source_info&) {
    return PulseDeviceKind::source;
}

bool isMonitor(const pa_sink_info&) {
    return false;
}

bool isMonitor(const pa_source_info& info) {
    return info.monitor_of_sink != PA_INVALID_INDEX;
}

std::string text(const char* characters) {
    return characters ? characters : "";
}

// Servers amplify; a volume of the platform ends at 1.
float averageVolume(const pa_cvolume& volume) {
    return std::min(1.0f, static_cast<float>(pa_cvolume_avg(&volume)) / static_cast<float>(PA_VOLUME_NORM));
}

template <class Info>
PulseDevice describe(const Info& info) {
    auto description = text(info.description);
    if (description.empty())
        description = text(info.name);
    return {kindOf(info),    info.index,     text(info.name),           std::move(description),
            isMonitor(info), info.mute != 0, averageVolume(info.volume)};
}

OSStatus statusOf(const pa_context* context) {
    switch (pa_context_errno(context)) {
    case PA_ERR_NOENTITY:
        return kAudioHardwareBadObjectError;
    case PA_ERR_CONNECTIONTERMINATED:
    case PA_ERR_BADSTATE:
        return kAudioHardwareNotRunningError;
    default:
        return kAudioHardwareUnspecifiedError;
    }
}

PulseContext makeContext(pa_mainloop_api* api) {
    const PulseProperties properties(pa_proplist_new());
    pa_proplist_sets(properties.get(), PA_PROP_APPLICATION_ID, "com.vantrelo.TavroPRO");
    return PulseContext(pa_context_new_with_proplist(api, "TavroPRO", properties.get()));
}

} // namespace

PulseConnection::PulseConnection(PulseMirror& mirror, Log& log, std::chrono::milliseconds firstRetryDelay,
                                 std::function<void()> mirrorChanged)
    : m_mirror(mirror)
    , m_log(log)
    , m_mirrorChanged(std::move(mirrorChanged))
    , m_firstRetryDelay(firstRetryDelay)
    , m_retryDelay(firstRetryDelay)
    , m_socketWatch([this] {
        m_retryDelay = m_firstRetryDelay;
        connect();
    }) {
    m_silence.setSingleShot(true);
    QObject::connect(&m_silence, &QTimer::timeout, &m_silence,
                     [this] { m_log.diagnose("The audio server does not answer"); });
    m_retry.setSingleShot(true);
    QObject::connect(&m_retry, &QTimer::timeout, &m_retry, [this] { connect(); });
    connect();
}

PulseConnection::~PulseConnection() {
    m_requests.clear(); // before the context that they are requests of
    m_writes.clear();
    m_context.reset();
}

// Also the place where a broken connection is let go of: its own callbacks, which report that it broke, must
// not.
void PulseConnection::connect() {
    m_requests.clear();
    m_writes.clear();
    m_retry.stop();
    m_socketWatch.remember();
    m_context = makeContext(m_loop.api());
    pa_context_set_state_callback(
        m_context.get(), [](pa_context*, void* self) { static_cast<PulseConnection*>(self)->stateChanged(); },
        this);
    pa_context_set_subscribe_callback(
        m_context.get(),
        [](pa_context*, pa_subscription_event_type_t event, std::uint32_t index, void* self) {
            static_cast<PulseConnection*>(self)->subscriptionEvent(event, index);
        },
        this);
    // Never started by us: which server runs is the session's affair, and a second one would take the
    // devices. A failure shows in the state as well, but not every one.
    if (pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        lost();
}

bool PulseConnection::isReady() const {
    return pa_context_get_state(m_context.get()) == PA_CONTEXT_READY;
}

bool PulseConnection::hasFailed() const {
    return m_retry.isActive();
}

void PulseConnection::stateChanged() {
    const auto state = pa_context_get_state(m_context.get());
    if (state == PA_CONTEXT_READY)
        ready();
    else if (!PA_CONTEXT_IS_GOOD(state))
        lost();
}

// The subscription comes first, so that whatever the listing does not show yet is reported.
void PulseConnection::ready() {
    m_socketWatch.stop();
    m_retryDelay = m_firstRetryDelay;
    constexpr auto subjects = static_cast<pa_subscription_mask_t>(
        PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SERVER);
    // Letting go of the operation cancels only its answer here: the request itself has been sent.
    const PulseOperation sent(pa_context_subscribe(m_context.get(), subjects, nullptr, nullptr));
    m_mirror.connected();
    askQuestions();
}

void PulseConnection::lost() {
    if (hasFailed())
        return;
    // One that has never shown its devices is not missed: at login it may only be on its way.
    if (m_mirror.isComplete())
        m_log.diagnose("The audio server has gone");
    m_mirror.disconnected();
    m_silence.stop();
    m_retry.start(m_retryDelay);
    m_retryDelay = std::min(2 * m_retryDelay, longestRetryDelay);
    m_socketWatch.start();
    m_mirrorChanged();
}

void PulseConnection::subscriptionEvent(pa_subscription_event_type_t event, std::uint32_t index) {
    const auto facility = event & PA_SUBSCRIPTION_EVENT_FACILITY_MASK;
    const auto kind =
        facility == PA_SUBSCRIPTION_EVENT_SINK ? PulseDeviceKind::sink : PulseDeviceKind::source;
    if (facility == PA_SUBSCRIPTION_EVENT_SERVER)
        m_mirror.defaultsChanged();
    else if ((event & PA_SUBSCRIPTION_EVENT_TYPE_MASK) == PA_SUBSCRIPTION_EVENT_REMOVE)
        m_mirror.deviceRemoved(kind, index);
    else
        m_mirror.deviceChanged(kind, index);
    askQuestions();
    m_mirrorChanged();
}

// A request that cannot be sent belongs to a connection that is about to be lost, and the mirror with it.
void PulseConnection::askQuestions() {
    for (const auto& question : m_mirror.takeQuestions()) {
        auto& request = m_requests[question.ticket];
        request = std::make_unique<Request>(Request{*this, question, {}, nullptr});
        request->operation = send(*request);
    }
}

PulseOperation PulseConnection::send(Request& request) {
    using About = PulseQuestion::About;
    const auto& [about, kind, index] = request.question.subject;
    auto* context = m_context.get();
    if (about == About::defaults)
        return PulseOperation(pa_context_get_server_info(context, &serverInfo, &request));
    const bool isAll = about == About::allDevices;
    if (kind == PulseDeviceKind::sink) {
        const auto answer = &deviceInfo<pa_sink_info>;
        return PulseOperation(isAll ? pa_context_get_sink_info_list(context, answer, &request)
                                    : pa_context_get_sink_info_by_index(context, index, answer, &request));
    }
    const auto answer = &deviceInfo<pa_source_info>;
    return PulseOperation(isAll ? pa_context_get_source_info_list(context, answer, &request)
                                : pa_context_get_source_info_by_index(context, index, answer, &request));
}

template <class Info>
void PulseConnection::deviceInfo(pa_context*, const Info* info, int end, void* userdata) {
    auto& request = *static_cast<Request*>(userdata);
    if (!end && info)
        request.devices.push_back(describe(*info));
    else
        request.connection.finished(request);
}

void PulseConnection::serverInfo(pa_context*, const pa_server_info* info, void* userdata) {
    auto& request = *static_cast<Request*>(userdata);
    PulseDefaults defaults;
    if (info)
        defaults = {text(info->default_sink_name), text(info->default_source_name)};
    request.connection.m_mirror.answerDefaults(request.question, std::move(defaults));
    request.connection.finished(request);
}

// Ends the request. One that is refused has no devices to show.
void PulseConnection::finished(const Request& request) {
    using About = PulseQuestion::About;
    const auto question = request.question;
    if (question.subject.about == About::allDevices)
        m_mirror.answerAllDevices(question, request.devices);
    else if (question.subject.about == About::oneDevice)
        m_mirror.answerOneDevice(question, request.devices.empty() ? std::nullopt
                                                                   : std::optional(request.devices.front()));
    m_requests.erase(question.ticket);
    askQuestions();
    m_mirrorChanged();
}

void PulseConnection::waitForListing(Clock::time_point deadline) {
    m_loop.runUntil([this] { return m_mirror.isComplete() || hasFailed(); }, deadline);
}

// By its name: the index may be another device's by the time that the request arrives. One that is on its way
// with the same flag need not be sent again.
OSStatus PulseConnection::setMute(AudioObjectID object, const PulseDevice& device, bool isMuted) {
    if (!isReady())
        return kAudioHardwareNotRunningError;
    const auto last = std::find_if(m_writes.rbegin(), m_writes.rend(),
                                   [&](const auto& write) { return write.object == object; });
    if (last != m_writes.rend() && last->isMuted == isMuted)
        return noErr;
    auto& write = m_writes.emplace_back(Write{*this, object, device.name, isMuted, nullptr});
    const auto request = device.kind == PulseDeviceKind::sink ? &pa_context_set_sink_mute_by_name
                                                              : &pa_context_set_source_mute_by_name;
    write.operation.reset(request(
        m_context.get(), write.name.c_str(), isMuted,
        [](pa_context*, int succeeded, void* userdata) {
            auto& answered = *static_cast<Write*>(userdata);
            answered.connection.answered(answered, succeeded);
        },
        &write));
    if (!write.operation) {
        m_writes.pop_back();
        return statusOf(m_context.get());
    }
    // One line for all that a silent server owes an answer to, not one for each.
    if (!m_silence.isActive())
        m_silence.start(longestSilence);
    return noErr;
}

void PulseConnection::answered(Write& write, int succeeded) {
    if (succeeded)
        m_mirror.confirmMute(write.object, write.isMuted);
    else if (pa_context_errno(m_context.get()) != PA_ERR_NOENTITY) // it was unplugged meanwhile
        m_log.diagnose("The audio server does not " + std::string(write.isMuted ? "mute " : "unmute ") +
                       write.name + ": " + pa_strerror(pa_context_errno(m_context.get())));
    m_writes.remove_if([&](const auto& each) { return &each == &write; });
    if (m_writes.empty())
        m_silence.stop();
    m_mirrorChanged();
}

void PulseConnection::waitForAnswers(Clock::time_point deadline) {
    m_loop.runUntil([this] { return m_writes.empty(); }, deadline);
}

} // namespace tavro
