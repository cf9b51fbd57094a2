#include "support/Eventually.h"
#include "support/desktop/Session.h"
#include "support/machines/AudioAddresses.h"
#include "support/machines/ProcessEvents.h"
#include "support/servers/AudioServer.h"

#include "platform/linux/audio/PulseAudioHardware.h"
#include "platform/linux/process/QtMainQueue.h"
#include "platform/simulated/process/SimulatedLog.h"

#include <QAbstractEventDispatcher>

#include <gmock/gmock.h>

#include <filesystem>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;

/// How often this process wakes up until a timer of the test's own, which is due after all shorter ones.
int awakeningsWithin(std::chrono::milliseconds time) {
    int count = 0;
    QEventLoop loop;
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &loop,
                     [&] { ++count; });
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
    return count;
}

/// The provider against the session's server, which `server` asks on its own.
class AudioTest : public testing::Test, protected AudioAddresses {
protected:
    void SetUp() override {
        ASSERT_TRUE(Session::isPrivate()) << "to be run by tools/desktop-session";
        launch();
        ASSERT_EQ(devices().size(), 4u);
    }

    /// As at the start of the program, but patient, unless a test wants to see that it is not.
    void launch(PulseAudioHardware::Waits waits = {.first = deadline}) {
        hardware.reset();
        hardware = std::make_unique<PulseAudioHardware>(queue, log, waits);
    }

    testing::AssertionResult eventually(const char* what, const std::function<bool()>& condition) {
        return ::eventually(what, condition, &processEvents);
    }

    static const Address& muteOf(const std::string& name) {
        return name.starts_with("speaker") ? outputMute : inputMute;
    }
    Words devices() const { return AudioAddresses::devices(*hardware); }
    AudioObjectID number(const std::string& name) const { return deviceWithUID(*hardware, name); }
    bool isMuted(const std::string& name) const {
        return read<std::uint32_t>(*hardware, number(name), muteOf(name), 4);
    }
    OSStatus setMute(const std::string& name, std::uint32_t mute) {
        return hardware->setPropertyData(number(name), muteOf(name), 4, mute);
    }

    bool showsTheSame() const {
        std::map<std::string, bool> shown;
        for (const auto device : devices()) {
            const auto name = uidOf(*hardware, device);
            shown[name] = isMuted(name);
        }
        return shown == server.muteFlags();
    }
    testing::AssertionResult comesToShowTheSame() {
        return eventually("the same devices as the server's", [this] { return showsTheSame(); });
    }

    AudioServer server;
    Journal journal;
    SimulatedLog log{journal};
    QtMainQueue queue;
    std::unique_ptr<PulseAudioHardware> hardware;
};

TEST_F(AudioTest, TheFirstReadShowsAllDevices) {
    for (int i = 0; i < 10; ++i) {
        server.plugInMicrophone("usb_" + std::to_string(i));
        server.plugInSpeaker("speaker_usb_" + std::to_string(i));
    }
    server.mute("mic_2", true);
    server.setVolume("speaker_2", 50);
    launch();
    EXPECT_TRUE(showsTheSame());
    EXPECT_EQ(devices().size(), 24u);
    EXPECT_EQ(read<float>(*hardware, number("speaker_2"), outputVolume, 4), 0.5f);
    server.setVolume("speaker_2", 100);
}

TEST_F(AudioTest, WritesTakeEffectBeforeTheProcessEnds) {
    const auto names = {"mic_1", "mic_2", "speaker_1"};
    for (const auto* name : names)
        EXPECT_EQ(setMute(name, 1), noErr);
    hardware->finish();
    for (const auto* name : names)
        EXPECT_TRUE(AudioServer::isMuted(name)) << name;
}

TEST_F(AudioTest, AServerIsFoundByItsSocketAsSoonAsItAppears) {
    const std::filesystem::path folder = std::filesystem::path(std::getenv("XDG_RUNTIME_DIR")) / "pulse";
    for (const bool hasFolder : {true, false}) {
        SCOPED_TRACE(hasFolder ? "in its folder" : "with its folder");
        server.end();
        if (!hasFolder)
            std::filesystem::remove_all(folder);
        launch({.retry = 1h});
        EXPECT_THAT(devices(), IsEmpty());
        std::uint32_t size = 0;
        EXPECT_EQ(hardware->getPropertyDataSize(kAudioObjectSystemObject, deviceList, size),
                  kAudioHardwareNotRunningError);
        server.start();
        EXPECT_TRUE(comesToShowTheSame());
    }
}

// Its socket is only the second place to look in, which is not watched.
TEST_F(AudioTest, AServerThatIsElsewhereIsFoundByRetrying) {
    const auto before = qgetenv("PULSE_SERVER");
    qputenv("PULSE_SERVER", "tcp:127.0.0.1:1 " + before);
    server.end();
    launch();
    EXPECT_THAT(devices(), IsEmpty());
    server.start();
    EXPECT_TRUE(comesToShowTheSame());
    qputenv("PULSE_SERVER", before);
}

TEST_F(AudioTest, ASilentServerIsWaitedForOnceAtLaunchAndGetsWritesWhenItAnswers) {
    server.freeze();
    launch({.first = 200ms});
    EXPECT_THAT(devices(), IsEmpty());
    server.thaw();
    EXPECT_THAT(devices(), IsEmpty()) << "waited a second time";
    ASSERT_TRUE(comesToShowTheSame());

    server.freeze();
    EXPECT_EQ(setMute("mic_1", 1), noErr);
    EXPECT_FALSE(isMuted("mic_1"));
    EXPECT_TRUE(eventually("a line", [&] {
        return log.takeDiagnosed() == std::vector<std::string>{"The audio server does not answer"};
    }));
    server.thaw();
    EXPECT_TRUE(eventually("the write confirmed", [&] { return isMuted("mic_1"); }));
    EXPECT_TRUE(showsTheSame());
}

TEST_F(AudioTest, NothingWakesUpByItselfWhileAServerRuns) {
    launch({.retry = 20ms});
    int calls = 0;
    const auto listener = std::make_shared<const std::function<void()>>([&] { ++calls; });
    EXPECT_EQ(hardware->addPropertyListener(number("mic_1"), inputMute, listener), noErr);
    server.end();
    ASSERT_TRUE(eventually("no devices", [&] { return devices().empty(); }));
    server.start();
    ASSERT_TRUE(comesToShowTheSame());
    EXPECT_EQ(setMute("mic_1", 1), noErr);
    ASSERT_TRUE(eventually("a write that the listener of before hears of",
                           [&] { return isMuted("mic_1") && calls == 1; }));
    EXPECT_TRUE(eventually("rest", [] { return awakeningsWithin(200ms) <= 2; }));
}

} // namespace
} // namespace tavro
