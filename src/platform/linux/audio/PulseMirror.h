#pragma once

#include "platform/audio/AudioHardware.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace tavro {

enum class PulseDeviceKind { sink, source };

/// A sink or a source as the server describes it.
struct PulseDevice {
    PulseDeviceKind kind = PulseDeviceKind::sink;
    std::uint32_t index = 0; // the server's; another device may have had it, and another kind may have it too
    std::string name;
    std::string description;
    bool isMonitor = false;
    bool isMuted = false;
    float volume = 0; // the average of the channels, 0 to 1
};

/// The names of the default devices.
struct PulseDefaults {
    std::string sink, source;
};

/// What the mirror wants to know of the server. The ticket comes back with the answer.
struct PulseQuestion {
    enum class About { defaults, allDevices, oneDevice };

    struct Subject {
        About about = About::defaults;
        PulseDeviceKind kind = PulseDeviceKind::sink; // but for the defaults
        std::uint32_t index = 0;                      // of one device
        auto operator<=>(const Subject&) const = default;
    };

    Subject subject;
    std::uint64_t ticket = 0;
};

/// What the server's devices are, as far as it has said. It knows no connection: events and answers go in as
/// calls, questions and changes come out.
///
/// A device is known by its kind and name. It keeps its number for good, also while it is away: one that
/// comes back under its name, or whose server does, is the same device. Monitors of sinks are no devices.
///
/// Events say only that something has changed, so that each asks a question. At most one question about a
/// subject is under way; what happens meanwhile is folded into one more. Only the answer to the latest
/// question counts: not one about a device that was removed meanwhile, nor one that belongs to an earlier
/// connection.
class PulseMirror {
public:
    /// A property of a device, or of the system, has another value than before.
    struct Change {
        AudioObjectID object = 0;
        std::uint32_t selector = 0;
        auto operator<=>(const Change&) const = default;
    };

    /// A server answers from now on; nothing is known of it.
    void connected();
    /// The server is gone, and all its devices with it.
    void disconnected();

    void deviceChanged(PulseDeviceKind kind, std::uint32_t index);
    void deviceRemoved(PulseDeviceKind kind, std::uint32_t index);
    void defaultsChanged();
    /// The questions that have come up since the last call.
    std::vector<PulseQuestion> takeQuestions();

    void answerDefaults(const PulseQuestion& question, PulseDefaults defaults);
    void answerAllDevices(const PulseQuestion& question, const std::vector<PulseDevice>& devices);
    /// None: there is no such device.
    void answerOneDevice(const PulseQuestion& question, const std::optional<PulseDevice>& device);
    /// The server has confirmed that a device has this flag now.
    void confirmMute(AudioObjectID object, bool isMuted);

    /// Whether all of what the server had at first is known. Before that, there are no devices.
    bool isComplete() const;
    std::vector<AudioObjectID> devices() const;
    /// Null when there is none of that number now.
    const PulseDevice* device(AudioObjectID object) const;
    /// 0 when no device is the default one.
    AudioObjectID defaultDevice(PulseDeviceKind kind) const;

    /// What has changed since the last call. A device that came back has changed if it differs from what it
    /// was; one that is new has not.
    std::vector<Change> takeChanges();

private:
    using Kind = PulseDeviceKind;
    using About = PulseQuestion::About;
    using Subject = PulseQuestion::Subject;

    struct Pending {
        std::uint64_t ticket = 0;
        bool asksAgain = false;
    };

    static std::size_t number(Kind kind) { return static_cast<std::size_t>(kind); }
    void clear();
    void ask(const Subject& subject);
    bool accept(const PulseQuestion& question);
    void store(const PulseDevice& device);
    PulseDevice& change(AudioObjectID object);
    void erase(Kind kind, std::uint32_t index);
    AudioObjectID identify(Kind kind, const std::string& name);
    void compareProperties(std::vector<Change>& changes);

    std::map<Subject, Pending> m_pending;
    std::vector<PulseQuestion> m_questions;
    std::uint64_t m_lastTicket = 0;
    std::set<std::pair<Kind, std::uint32_t>> m_removedWhileListing;

    std::map<std::pair<Kind, std::string>, AudioObjectID> m_identities;
    std::map<AudioObjectID, PulseDevice> m_devices;
    std::map<std::pair<Kind, std::uint32_t>, AudioObjectID> m_places; // by the server's index
    PulseDefaults m_defaults;
    std::array<bool, 2> m_isListed{};
    bool m_hasDefaults = false;

    std::set<AudioObjectID> m_changed; // since the last notification; so is the next
    bool m_hasOtherDevices = false;
    std::map<AudioObjectID, PulseDevice> m_toldProperties; // of all that ever were
    std::vector<AudioObjectID> m_toldDevices;
    std::array<AudioObjectID, 2> m_toldDefaults{};
};

} // namespace tavro
