#include "platform/linux/audio/PulseMirror.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>

namespace tavro {
namespace {

using Kind = PulseDeviceKind;
using About = PulseQuestion::About;
using testing::ElementsAre;
using testing::IsEmpty;

PulseDevice sink(std::uint32_t index, const std::string& name, bool isMuted = false, float volume = 1) {
    return {Kind::sink, index, name, "the " + name, false, isMuted, volume};
}

PulseDevice source(std::uint32_t index, const std::string& name, bool isMuted = false) {
    return {Kind::source, index, name, "the " + name, false, isMuted, 1};
}

PulseDevice monitor(std::uint32_t index, const std::string& name) {
    auto device = source(index, name);
    device.isMonitor = true;
    return device;
}

/// A server that is described by hand: it answers when the test says so, with what it has at that moment.
class PulseMirrorTest : public testing::Test {
protected:
    /// The questions that have come up and were not answered yet.
    const std::vector<PulseQuestion>& questions() {
        for (auto& question : mirror.takeQuestions())
            waiting.push_back(question);
        return waiting;
    }

    void answer(const PulseQuestion& question) {
        const auto& [about, kind, index] = question.subject;
        if (about == About::defaults)
            return mirror.answerDefaults(question, defaults);
        std::vector<PulseDevice> found;
        for (const auto& device : devices)
            if (device.kind == kind && (about == About::allDevices || device.index == index))
                found.push_back(device);
        if (about == About::allDevices)
            mirror.answerAllDevices(question, found);
        else
            mirror.answerOneDevice(question, found.empty() ? std::nullopt : std::optional(found.front()));
    }

    void answerFirst() {
        const auto question = questions().at(0);
        waiting.erase(waiting.begin());
        answer(question);
    }

    void answerAll() {
        while (!questions().empty())
            answerFirst();
    }

    void connect() {
        waiting.clear();
        mirror.connected();
        answerAll();
    }

    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto object : mirror.devices())
            names.push_back(mirror.device(object)->name);
        return names;
    }

    AudioObjectID number(const std::string& name) const {
        for (const auto object : mirror.devices())
            if (mirror.device(object)->name == name)
                return object;
        return 0;
    }

    bool isMuted(const std::string& name) const { return mirror.device(number(name))->isMuted; }

    PulseMirror mirror;
    std::vector<PulseDevice> devices{sink(0, "speaker"), monitor(0, "speaker.monitor"), source(1, "mic")};
    PulseDefaults defaults{"speaker", "mic"};
    std::vector<PulseQuestion> waiting;
};

TEST_F(PulseMirrorTest, ShowsNothingBeforeAllThatTheServerHadIsKnown) {
    mirror.connected();
    ASSERT_EQ(questions().size(), 3u);
    while (!questions().empty()) {
        EXPECT_FALSE(mirror.isComplete());
        EXPECT_THAT(mirror.devices(), IsEmpty());
        EXPECT_EQ(mirror.device(2), nullptr);
        EXPECT_EQ(mirror.defaultDevice(Kind::sink), 0u);
        answerFirst();
    }
    EXPECT_TRUE(mirror.isComplete());
    EXPECT_THAT(names(), ElementsAre("speaker", "mic"));
    EXPECT_EQ(mirror.defaultDevice(Kind::sink), number("speaker"));
    EXPECT_EQ(mirror.defaultDevice(Kind::source), number("mic"));
}

// Each case acts while the three questions of the connection, or one of a change, wait for their answers.
TEST_F(PulseMirrorTest, AnswersThatComeLateChangeNothing) {
    using Names = std::vector<std::string>;
    const std::vector<PulseDevice> withOther{devices[0], devices[1], devices[2], source(7, "other")};
    mirror.connected();
    auto old = questions();
    ASSERT_EQ(old.size(), 3u);

    // Of the connection before this one.
    waiting.clear();
    mirror.connected();
    std::ranges::for_each(old, [this](const auto& question) { answer(question); });
    devices = {source(1, "another server's")};
    answerAll();
    EXPECT_EQ(names(), Names{"another server's"});

    // Removed while the list is under way, and then its index taken again.
    for (const bool isTakenAgain : {false, true}) {
        devices = withOther;
        mirror.connected();
        ASSERT_EQ(questions().size(), 3u);
        mirror.deviceRemoved(Kind::source, 7);
        if (isTakenAgain)
            mirror.deviceChanged(Kind::source, 7);
        answerAll();
        EXPECT_EQ(names(), isTakenAgain ? Names({"speaker", "mic", "other"}) : Names({"speaker", "mic"}));
    }

    // Removed before it is described: it was there when the server answered.
    mirror.deviceChanged(Kind::source, 7);
    ASSERT_EQ(questions().size(), 1u);
    mirror.deviceRemoved(Kind::source, 7);
    answerAll();
    EXPECT_EQ(names(), Names({"speaker", "mic"}));

    // Gone when the server looked for it.
    mirror.deviceChanged(Kind::source, 1);
    devices = {sink(0, "speaker")};
    answerAll();
    EXPECT_EQ(names(), Names{"speaker"});

    // After the server has gone.
    mirror.connected();
    old = questions();
    mirror.disconnected();
    std::ranges::for_each(old, [this](const auto& question) { answer(question); });
    EXPECT_EQ(names(), Names{});
}

TEST_F(PulseMirrorTest, ABurstIsFoldedIntoOneMoreQuestionAndEndsWithWhatIsTrue) {
    connect();
    devices.back().isMuted = true;
    mirror.deviceChanged(Kind::source, 1);
    ASSERT_EQ(questions().size(), 1u);
    for (int i = 0; i < 100; ++i)
        mirror.deviceChanged(Kind::source, 1);
    EXPECT_EQ(questions().size(), 1u);
    answerFirst();
    EXPECT_TRUE(isMuted("mic"));
    devices.back().isMuted = false;
    ASSERT_EQ(questions().size(), 1u);
    answerFirst();
    EXPECT_FALSE(isMuted("mic"));
    EXPECT_THAT(questions(), IsEmpty());
}

TEST_F(PulseMirrorTest, KindsAreKeptApartAlthoughTheyShareTheirIndexes) {
    devices = {sink(3, "both"), source(3, "both")};
    connect();
    ASSERT_EQ(mirror.devices().size(), 2u);
    mirror.deviceRemoved(Kind::sink, 3);
    ASSERT_EQ(mirror.devices().size(), 1u);
    EXPECT_EQ(mirror.device(mirror.devices().front())->kind, Kind::source);
}

TEST_F(PulseMirrorTest, ADeviceKeepsItsNumberForGoodAndNoOtherGetsIt) {
    connect();
    const auto mic = number("mic");
    const auto replug = [this](PulseDevice device) {
        mirror.deviceRemoved(Kind::source, devices.back().index);
        devices.back() = std::move(device);
        mirror.deviceChanged(Kind::source, devices.back().index);
        answerAll();
    };
    replug(source(1, "other")); // at the index that the microphone had
    EXPECT_EQ(mirror.device(mic), nullptr);
    EXPECT_NE(number("other"), 0u);
    EXPECT_NE(number("other"), mic);
    replug(source(9, "mic"));
    EXPECT_EQ(number("mic"), mic);
    mirror.disconnected();
    EXPECT_EQ(mirror.device(mic), nullptr);
    connect();
    EXPECT_EQ(number("mic"), mic);
}

TEST_F(PulseMirrorTest, AnIndexOrANameThatMovedWithoutAWordLeavesNoGhost) {
    connect();
    devices.back() = source(1, "other"); // the removal of "mic" was never told
    mirror.deviceChanged(Kind::source, 1);
    answerAll();
    EXPECT_THAT(names(), ElementsAre("speaker", "other"));
    devices.back() = source(5, "other");
    mirror.deviceChanged(Kind::source, 5);
    answerAll();
    mirror.deviceRemoved(Kind::source, 1); // late
    EXPECT_THAT(names(), ElementsAre("speaker", "other"));
}

TEST_F(PulseMirrorTest, TellsWhatHasChangedOnceAndNothingElse) {
    constexpr auto system = kAudioObjectSystemObject;
    connect();
    EXPECT_THAT(mirror.takeChanges(),
                ElementsAre(PulseMirror::Change{system, kAudioHardwarePropertyDevices},
                            PulseMirror::Change{system, kAudioHardwarePropertyDefaultOutputDevice},
                            PulseMirror::Change{system, kAudioHardwarePropertyDefaultInputDevice}));
    const auto mic = number("mic");
    const auto speaker = number("speaker");
    const auto update = [this](const PulseDevice& device) {
        *std::ranges::find(devices, device.name, &PulseDevice::name) = device;
        mirror.deviceChanged(device.kind, device.index);
    };
    const struct {
        const char* what;
        std::function<void()> act;
        std::vector<PulseMirror::Change> expected;
    } cases[] = {
        {"nothing", [] {}, {}},
        {"an event without a change", [&] { mirror.deviceChanged(Kind::source, 1); }, {}},
        {"a monitor's event", [&] { mirror.deviceChanged(Kind::source, 0); }, {}},
        {"muted", [&] { update(source(1, "mic", true)); }, {{mic, kAudioDevicePropertyMute}}},
        {"louder",
         [&] { update(sink(0, "speaker", false, 0.5f)); },
         {{speaker, kAudioDevicePropertyVolumeScalar}}},
        {"confirmed, then told by the server as well",
         [&] {
             mirror.confirmMute(mic, false);
             update(source(1, "mic", false));
         },
         {{mic, kAudioDevicePropertyMute}}},
        {"another default",
         [&] {
             defaults.source = "";
             mirror.defaultsChanged();
         },
         {{system, kAudioHardwarePropertyDefaultInputDevice}}},
        {"unplugged",
         [&] { mirror.deviceRemoved(Kind::source, 1); },
         {{system, kAudioHardwarePropertyDevices}}},
        {"plugged in again as it was",
         [&] { mirror.deviceChanged(Kind::source, 1); },
         {{system, kAudioHardwarePropertyDevices}}},
        {"server gone",
         [&] { mirror.disconnected(); },
         {{system, kAudioHardwarePropertyDevices}, {system, kAudioHardwarePropertyDefaultOutputDevice}}},
        {"back, and muted meanwhile",
         [&] {
             devices.back().isMuted = true;
             mirror.connected();
         },
         {{system, kAudioHardwarePropertyDevices},
          {system, kAudioHardwarePropertyDefaultOutputDevice},
          {mic, kAudioDevicePropertyMute}}},
    };
    for (const auto& [what, act, expected] : cases) {
        SCOPED_TRACE(what);
        act();
        answerAll();
        EXPECT_EQ(mirror.takeChanges(), expected);
    }
}

TEST_F(PulseMirrorTest, ADefaultThatIsNoDeviceIsNone) {
    for (const auto* name : {"", "speaker.monitor", "speaker", "unknown"}) {
        SCOPED_TRACE(name);
        defaults.source = name;
        connect();
        EXPECT_EQ(mirror.defaultDevice(Kind::source), 0u);
    }
}

TEST_F(PulseMirrorTest, AWriteIsShownAtOnceIfTheDeviceIsStillThere) {
    connect();
    const auto mic = number("mic");
    mirror.confirmMute(mic, true);
    EXPECT_TRUE(isMuted("mic"));
    mirror.deviceRemoved(Kind::source, 1);
    mirror.confirmMute(mic, false);
    EXPECT_EQ(mirror.device(mic), nullptr);
}

} // namespace
} // namespace tavro
