#include "support/AudioServer.h"
#include "support/Session.h"

#include "platform/linux/audio/PulseAudioHardware.h"
#include "platform/linux/process/QtMainQueue.h"
#include "platform/linux/process/StreamLog.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QTimer>
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using testing::IsEmpty;

constexpr auto input = kAudioObjectPropertyScopeInput;
constexpr auto output = kAudioObjectPropertyScopeOutput;
constexpr AudioObjectPropertyAddress deviceList{kAudioHardwarePropertyDevices};
constexpr AudioObjectPropertyAddress nameOf{kAudioObjectPropertyName}, uidOf{kAudioDevicePropertyDeviceUID};

bool isSpeaker(const std::string& name) {
    return name.starts_with("speaker");
}

AudioObjectPropertyAddress muteOf(const std::string& name) {
    return {kAudioDevicePropertyMute, isSpeaker(name) ? output : input};
}

std::chrono::milliseconds timeOf(const std::function<void()>& block) {
    const auto begin = Clock::now();
    block();
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
}

/// The provider against the session's server, which `server` asks on its own.
class AudioTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(Session::isPrivate()) << "to be run by tools/desktop-session";
        launch();
    }

    /// As at the start of the program.
    void launch() {
        hardware.reset();
        hardware = std::make_unique<PulseAudioHardware>(queue, log);
    }

    testing::AssertionResult eventually(const char* what, const std::function<bool()>& condition) {
        const auto end = Clock::now() + 10s;
        QTimer lookAgain;
        lookAgain.start(5ms);
        while (!condition()) {
            if (Clock::now() > end)
                return testing::AssertionFailure() << "after 10 s there was still lacking: " << what;
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        return testing::AssertionSuccess();
    }

    template <class T>
    T read(AudioObjectID object, const AudioObjectPropertyAddress& address, std::uint32_t size) const {
        AudioPropertyValue value;
        const auto status = hardware->getPropertyData(object, address, size, value);
        return status == noErr ? std::get<T>(value) : T();
    }

    std::vector<AudioObjectID> devices() const {
        return read<std::vector<std::uint32_t>>(kAudioObjectSystemObject, deviceList, 4096);
    }
    std::string uid(AudioObjectID device) const { return read<std::string>(device, uidOf, 8); }
    AudioObjectID number(const std::string& name) const {
        const auto all = devices();
        const auto found = std::ranges::find(all, name, [this](auto device) { return uid(device); });
        return found == all.end() ? 0 : *found;
    }
    bool isMuted(const std::string& name) const { return read<std::uint32_t>(number(name), muteOf(name), 4); }
    OSStatus setMute(const std::string& name, std::uint32_t mute) {
        return hardware->setPropertyData(number(name), muteOf(name), 4, mute);
    }

    /// What the provider shows, in the words of the server.
    std::map<std::string, AudioServer::Device> shown(std::uint32_t direction) const {
        std::map<std::string, AudioServer::Device> result;
        for (const auto device : devices()) {
            std::uint32_t size = 0;
            hardware->getPropertyDataSize(device, {kAudioDevicePropertyStreams, direction}, size);
            const auto name = uid(device);
            const AudioObjectPropertyAddress volume{kAudioDevicePropertyVolumeScalar, output};
            if (size == 4)
                result[name] = {name, read<std::string>(device, nameOf, 8),
                                read<std::uint32_t>(device, {kAudioDevicePropertyMute, direction}, 4) != 0,
                                direction == output ? read<float>(device, volume, 4) : 1.0f};
        }
        return result;
    }

    testing::AssertionResult showsWhatTheServerHas() {
        return eventually("the same devices as the server's", [this] {
            return shown(output) == server.speakers() && shown(input) == server.microphones();
        });
    }

    /// Counts the changes of a device's mute flag that it is told of.
    void observe(const std::string& name, int& count) {
        auto listener = std::make_shared<const std::function<void()>>([&count] { ++count; });
        EXPECT_EQ(hardware->addPropertyListener(number(name), muteOf(name), listener), noErr);
        listeners.push_back(listener);
    }

    static constexpr const char* allNames[] = {"mic_1", "mic_2", "speaker_1", "speaker_2"};

    AudioServer server;
    StreamLog log;
    QtMainQueue queue;
    std::unique_ptr<PulseAudioHardware> hardware;
    std::vector<AudioPropertyListener> listeners;
};

TEST_F(AudioTest, TheVeryFirstReadShowsTheDevicesOfTheServer) {
    server.mute("mic_2", true);
    server.setVolume("speaker_2", 50);
    launch();
    std::vector<AudioObjectID> first;
    const auto time = timeOf([&] { first = devices(); });
    EXPECT_LT(time, 300ms);
    RecordProperty("first_read_ms", static_cast<int>(time.count()));
    EXPECT_EQ(first.size(), 4u);
    EXPECT_EQ(shown(output), server.speakers());
    EXPECT_EQ(shown(input), server.microphones());
    const auto defaultDevice = [this](std::uint32_t selector) {
        return uid(read<std::uint32_t>(kAudioObjectSystemObject, {selector}, 4));
    };
    EXPECT_EQ(defaultDevice(kAudioHardwarePropertyDefaultInputDevice), "mic_1");
    EXPECT_EQ(defaultDevice(kAudioHardwarePropertyDefaultOutputDevice), "speaker_1");
}

TEST_F(AudioTest, AListenerMayRemoveAnyFromWithinItsCall) {
    const auto mic = number("mic_1");
    int told = 0;
    const auto removesAll = std::make_shared<std::function<void()>>();
    const AudioPropertyListener other = std::make_shared<std::function<void()>>([&] { told += 100; });
    *removesAll = [&] {
        ++told;
        hardware->removePropertyListener(mic, muteOf("mic_1"), removesAll);
        hardware->removePropertyListener(mic, muteOf("mic_1"), other);
    };
    hardware->addPropertyListener(mic, muteOf("mic_1"), removesAll);
    hardware->addPropertyListener(mic, muteOf("mic_1"), other);
    server.mute("mic_1", true);
    EXPECT_TRUE(eventually("the word", [&] { return told > 0; }));
    server.mute("mic_1", false);
    EXPECT_TRUE(eventually("the change", [&] { return !isMuted("mic_1"); }));
    EXPECT_EQ(told, 1);
}

TEST_F(AudioTest, ADeviceComesGoesAndComesBackUnderObservation) {
    server.plugInMicrophone("usb");
    ASSERT_TRUE(eventually("the new device", [&] { return number("usb") != 0; }));
    const auto usb = number("usb");
    int told = 0;
    observe("usb", told);
    server.unplug("usb");
    // Nothing was delivered yet, so that the device still shows.
    EXPECT_EQ(hardware->setPropertyData(usb, muteOf("usb"), 4, 1u), kAudioHardwareBadObjectError);
    EXPECT_TRUE(eventually("the list without it", [&] { return number("usb") == 0; }));
    EXPECT_FALSE(hardware->hasProperty(usb, nameOf));
    EXPECT_EQ(hardware->addPropertyListener(usb, muteOf("usb"), listeners.back()),
              kAudioHardwareBadObjectError);
    EXPECT_EQ(told, 0);
    server.plugInMicrophone("usb");
    ASSERT_TRUE(eventually("the device again", [&] { return number("usb") != 0; }));
    EXPECT_EQ(number("usb"), usb);
    server.mute("usb", true);
    EXPECT_TRUE(eventually("word of its change", [&] { return told == 1; }));
    server.unplug("usb");
    EXPECT_TRUE(eventually("the list without it", [&] { return number("usb") == 0; }));
    EXPECT_EQ(hardware->removePropertyListener(usb, muteOf("usb"), listeners.back()),
              kAudioHardwareBadObjectError);
    server.plugInMicrophone("usb");
    server.mute("usb", false); // as it is anyhow, unless the server has restored what it was
    ASSERT_TRUE(eventually("the device unmuted", [&] { return number("usb") != 0 && !isMuted("usb"); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1) << "after the removal";
}

TEST_F(AudioTest, ARestartedServerIsFoundAgainWithAllThatWasObserved) {
    const auto before = devices();
    int told = 0;
    observe("mic_1", told);
    server.end();
    ASSERT_TRUE(eventually("no devices", [&] { return devices().empty(); }));
    std::uint32_t size = 0;
    EXPECT_EQ(hardware->getPropertyDataSize(kAudioObjectSystemObject, deviceList, size),
              kAudioHardwareNotRunningError);
    EXPECT_EQ(hardware->setPropertyData(before[0], muteOf("mic_1"), 4, 1u), kAudioHardwareBadObjectError);
    server.start();
    server.mute("mic_1", true);
    EXPECT_TRUE(showsWhatTheServerHas());
    EXPECT_THAT(devices(), testing::UnorderedElementsAreArray(before));
    EXPECT_TRUE(eventually("word that the microphone is muted now", [&] { return told == 1; }));
    EXPECT_EQ(setMute("mic_1", 0), noErr);
    EXPECT_FALSE(server.microphones()["mic_1"].isMuted);
}

TEST_F(AudioTest, AServerThatAppearsIsFoundAtOnce) {
    const std::filesystem::path folder = std::filesystem::path(std::getenv("XDG_RUNTIME_DIR")) / "pulse";
    for (const bool hasFolder : {true, false}) {
        SCOPED_TRACE(hasFolder ? "in its folder" : "with its folder");
        server.end();
        if (!hasFolder)
            std::filesystem::remove_all(folder);
        launch();
        EXPECT_LT(timeOf([&] { EXPECT_THAT(devices(), IsEmpty()); }), 250ms);
        // After the attempts of the first three seconds; the next one would be four seconds later.
        ASSERT_TRUE(eventually("3.3 s", [end = Clock::now() + 3300ms] { return Clock::now() > end; }));
        server.start();
        const auto time = timeOf([&] { EXPECT_TRUE(showsWhatTheServerHas()); });
        EXPECT_LT(time, 2s);
        RecordProperty(hasFolder ? "found_again_ms" : "found_again_with_folder_ms",
                       static_cast<int>(time.count()));
    }
}

TEST_F(AudioTest, AServerIsFoundAlsoWhereNothingTellsOfIt) {
    const int port = 20000 + ::getpid() % 10000;
    const auto before = qgetenv("PULSE_SERVER");
    qputenv("PULSE_SERVER", "tcp:127.0.0.1:" + QByteArray::number(port));
    launch();
    EXPECT_LT(timeOf([&] { EXPECT_THAT(devices(), IsEmpty()); }), 250ms);
    server.listen(port);
    EXPECT_TRUE(showsWhatTheServerHas());
    hardware.reset();
    qputenv("PULSE_SERVER", before);
}

TEST_F(AudioTest, AServerThatDoesNotAnswerCostsHalfASecondAtMost) {
    ASSERT_EQ(devices().size(), 4u);
    server.freeze();
    const auto time = timeOf([&] {
        for (const auto* name : allNames)
            EXPECT_NE(setMute(name, 1), noErr);
    });
    EXPECT_LT(time, 700ms);
    RecordProperty("four_writes_ms", static_cast<int>(time.count()));
    EXPECT_LT(timeOf([&] { EXPECT_EQ(devices().size(), 4u); }), 100ms);
    EXPECT_FALSE(isMuted("mic_1"));
    server.thaw();
    EXPECT_TRUE(showsWhatTheServerHas()) << "whatever it did with the writes";
    for (const std::uint32_t mute : {1, 0}) {
        EXPECT_EQ(setMute("mic_1", mute), noErr);
        EXPECT_EQ(server.microphones()["mic_1"].isMuted, mute != 0);
    }
}

TEST_F(AudioTest, AServerThatDoesNotAnswerAtLaunchIsWaitedForOnceOnly) {
    server.freeze();
    launch();
    EXPECT_LT(timeOf([&] { EXPECT_THAT(devices(), IsEmpty()); }), 400ms);
    EXPECT_LT(timeOf([&] { EXPECT_THAT(devices(), IsEmpty()); }), 100ms);
    server.thaw();
    EXPECT_TRUE(showsWhatTheServerHas());
}

TEST_F(AudioTest, AHundredMicrophonesAndAHundredSpeakersAreSwitchedInOneTurn) {
    for (int i = 0; i < 100; ++i) {
        server.plugInMicrophone("usb_" + std::to_string(i));
        server.plugInSpeaker("speaker_usb_" + std::to_string(i));
    }
    EXPECT_TRUE(eventually("all devices", [&] { return devices().size() == 204; }));
    launch();
    const auto reading = timeOf([&] { EXPECT_EQ(devices().size(), 204u); });
    RecordProperty("first_read_of_204_ms", static_cast<int>(reading.count()));
    const auto all = devices();
    const auto writing = timeOf([&] {
        for (const auto device : all) {
            const auto scope = isSpeaker(uid(device)) ? output : input;
            EXPECT_EQ(hardware->setPropertyData(device, {kAudioDevicePropertyMute, scope}, 4, 1u), noErr);
        }
    });
    RecordProperty("204_writes_ms", static_cast<int>(writing.count()));
    EXPECT_LT(writing, 500ms);
    const auto isMuted = [](const auto& entry) { return entry.second.isMuted; };
    EXPECT_TRUE(std::ranges::all_of(server.microphones(), isMuted));
    EXPECT_TRUE(std::ranges::all_of(server.speakers(), isMuted));
}

TEST_F(AudioTest, NothingWakesUpByItselfWhileAServerRuns) {
    server.end();
    ASSERT_TRUE(eventually("no devices", [&] { return devices().empty(); }));
    server.start();
    ASSERT_TRUE(showsWhatTheServerHas());
    ASSERT_EQ(setMute("mic_1", 1), noErr);
    // Longer than the first attempts to connect again would be apart.
    int awakenings = 0;
    QEventLoop loop;
    QTimer::singleShot(500ms, &loop, [&] { // what is under way has ended by now
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &loop,
                         [&] { ++awakenings; });
        QTimer::singleShot(3s, &loop, &QEventLoop::quit);
    });
    loop.exec();
    EXPECT_LE(awakenings, 2) << "besides the end of the wait";
}

} // namespace
} // namespace tavro

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
