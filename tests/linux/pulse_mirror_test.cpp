#include "platform/linux/audio/PulseMirror.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace tavro {
namespace {

using enum PulseDeviceKind;
using About = PulseQuestion::About;
using Step = std::function<void()>;

PulseDevice device(PulseDeviceKind kind, std::uint32_t index, const std::string& name, bool isMuted = false,
                   float volume = 1, const std::string& description = "") {
    return {kind, index, name, description, name.ends_with(".monitor"), isMuted, volume};
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

    Step changed(PulseDeviceKind kind, std::uint32_t index) {
        return [=, this] { mirror.deviceChanged(kind, index); };
    }
    Step removed(PulseDeviceKind kind, std::uint32_t index) {
        return [=, this] { mirror.deviceRemoved(kind, index); };
    }
    /// The server has one more device, or another one in its place, and says so.
    Step has(const PulseDevice& device) {
        return [=, this] {
            std::erase_if(devices, [&](const auto& other) {
                return other.kind == device.kind &&
                       (other.index == device.index || other.name == device.name);
            });
            devices.push_back(device);
            mirror.deviceChanged(device.kind, device.index);
        };
    }
    Step hasDefaultSource(const std::string& name) {
        return [=, this] {
            defaults.source = name;
            mirror.defaultsChanged();
        };
    }
    Step confirmed(AudioObjectID object, bool isMuted) {
        return [=, this] { mirror.confirmMute(object, isMuted); };
    }
    /// What waits for an answer gets it after the step.
    Step late(const Step& step) {
        return [=, this] {
            const auto old = questions();
            waiting.clear();
            step();
            std::ranges::for_each(old, [this](const auto& question) { answer(question); });
        };
    }

    /// The devices with their numbers.
    std::string shown() const {
        std::string text;
        for (const auto object : mirror.devices())
            text += std::to_string(object) + mirror.device(object)->name + " ";
        return text;
    }
    /// What has changed since the last call, by the codes of the properties.
    std::string changes() {
        std::string text;
        for (const auto& [object, selector] : mirror.takeChanges()) {
            if (object != kAudioObjectSystemObject)
                text += std::to_string(object);
            for (const int shift : {24, 16, 8, 0})
                text += static_cast<char>(selector >> shift);
            text += " ";
        }
        return text;
    }

    const Step connected = [this] { mirror.connected(); };
    const Step disconnected = [this] { mirror.disconnected(); };
    const Step answered = [this] { answerAll(); };

    PulseMirror mirror;
    std::vector<PulseDevice> devices{device(sink, 0, "speaker"), device(source, 0, "speaker.monitor"),
                                     device(source, 1, "mic")};
    PulseDefaults defaults{"speaker", "mic"};
    std::vector<PulseQuestion> waiting;
};

TEST_F(PulseMirrorTest, ShowsNothingUntilTheListingIsComplete) {
    for (const bool isReversed : {false, true}) {
        mirror.connected();
        mirror.connected(); // the questions of before are of no use
        questions();
        if (isReversed)
            std::ranges::reverse(waiting);
        for (std::size_t left = 3; left > 0; --left) {
            EXPECT_EQ(questions().size(), left);
            EXPECT_FALSE(mirror.isComplete());
            EXPECT_EQ(shown() + changes(), "");
            EXPECT_EQ(mirror.device(2), nullptr);
            EXPECT_EQ(mirror.defaultDevice(sink), 0u);
            answerFirst();
        }
        EXPECT_TRUE(mirror.isComplete());
        EXPECT_EQ(mirror.defaultDevice(sink), 2u);
        EXPECT_EQ(mirror.defaultDevice(source), 3u);
        EXPECT_EQ(changes(), "dev# dOut dIn  ");
        mirror.disconnected();
        EXPECT_EQ(changes(), "dev# dOut dIn  ");
    }
}

TEST_F(PulseMirrorTest, FollowsTheServerAndReportsEachChangeOnce) {
    const std::tuple<const char*, std::vector<Step>, const char*, const char*> history[] = {
        {"connected", {connected}, "2speaker 3mic ", "dev# dOut dIn  "},
        {"nothing", {}, "2speaker 3mic ", ""},
        {"no change", {changed(source, 1)}, "2speaker 3mic ", ""},
        {"a monitor", {changed(source, 0)}, "2speaker 3mic ", ""},
        {"muted", {has(device(source, 1, "mic", true))}, "2speaker 3mic ", "3mute "},
        {"louder", {has(device(sink, 0, "speaker", false, 0.5f))}, "2speaker 3mic ", "2volm "},
        {"a microphone louder", {has(device(source, 1, "mic", true, 0.5f))}, "2speaker 3mic ", ""},
        {"confirmed, then announced",
         {confirmed(3, false), has(device(source, 1, "mic"))},
         "2speaker 3mic ",
         "3mute "},
        {"renamed", {has(device(source, 1, "mic", false, 1, "new"))}, "2speaker 3mic ", "3lnam "},
        {"no default", {hasDefaultSource("")}, "2speaker 3mic ", "dIn  "},
        {"a monitor as the default", {hasDefaultSource("speaker.monitor")}, "2speaker 3mic ", ""},
        {"a sink as the default", {hasDefaultSource("speaker")}, "2speaker 3mic ", ""},
        {"an unknown default", {hasDefaultSource("unknown")}, "2speaker 3mic ", ""},
        {"the former default", {hasDefaultSource("mic")}, "2speaker 3mic ", "dIn  "},
        {"unplugged, then confirmed", {removed(source, 1), confirmed(3, true)}, "2speaker ", "dev# dIn  "},
        {"plugged in as it was", {changed(source, 1)}, "2speaker 3mic ", "dev# dIn  "},
        {"a sink with its name and index", {has(device(sink, 1, "mic"))}, "2speaker 3mic 4mic ", "dev# "},
        {"which goes", {removed(sink, 1)}, "2speaker 3mic ", "dev# "},
        {"replaced without a word", {has(device(source, 1, "other"))}, "2speaker 5other ", "dev# dIn  "},
        {"moved without a word", {has(device(source, 5, "other"))}, "2speaker 5other ", ""},
        {"removed late where it was", {removed(source, 1)}, "2speaker 5other ", ""},
        {"server gone", {disconnected}, "", "dev# dOut "},
        {"back, without the speaker, and muted meanwhile",
         {has(device(source, 5, "other", true)), has(device(sink, 0, "mic")), connected},
         "4mic 5other ",
         "dev# 5mute "},
    };
    for (const auto& [what, steps, expected, expectedChanges] : history) {
        SCOPED_TRACE(what);
        for (const auto& step : steps)
            step();
        answerAll();
        EXPECT_EQ(shown(), expected);
        EXPECT_EQ(changes(), expectedChanges);
    }
}

// Each case begins while the three questions of the connection wait for their answers.
TEST_F(PulseMirrorTest, LateAnswersChangeNothing) {
    const std::tuple<const char*, std::vector<Step>, const char*> cases[] = {
        {"of the connection before", {late(connected), [&] { devices.pop_back(); }}, "2speaker 3mic "},
        {"after the server has gone", {late(disconnected)}, ""},
        {"a list without the removal", {removed(source, 7)}, "2speaker 3mic "},
        {"whose index is taken again", {removed(source, 7), changed(source, 7)}, "2speaker 3mic 4other "},
        {"a description of one that was removed",
         {answered, changed(source, 7), late(removed(source, 7))},
         "2speaker 3mic "},
        {"of one that had gone by then",
         {answered, changed(source, 7), [&] { devices.pop_back(); }},
         "2speaker 3mic "},
    };
    devices.push_back(device(source, 7, "other"));
    for (const auto all = devices; const auto& [what, steps, expected] : cases) {
        SCOPED_TRACE(what);
        devices = all;
        mirror = PulseMirror();
        mirror.connected();
        for (const auto& step : steps)
            step();
        answerAll();
        EXPECT_EQ(shown(), expected);
    }
}

TEST_F(PulseMirrorTest, ABurstOfEventsAsksOneMoreQuestion) {
    mirror.connected();
    answerAll();
    for (int i = 0; i < 100; ++i)
        mirror.deviceChanged(source, 1);
    for (const bool isMuted : {true, false}) {
        devices.back().isMuted = isMuted;
        ASSERT_EQ(questions().size(), 1u);
        answerFirst();
        EXPECT_EQ(mirror.device(3)->isMuted, isMuted);
    }
    EXPECT_TRUE(questions().empty());
}

} // namespace
} // namespace tavro
