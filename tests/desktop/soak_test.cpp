#include "support/desktop/DesktopTest.h"
#include "support/desktop/Footprint.h"
#include "support/servers/AudioServer.h"

#include <cstdlib>
#include <iostream>
#include <optional>

/// Many presentations while windows, devices and screens come and go.
/// TAVRO_PRESENTATIONS says how many.
class Soak : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        writeDefaultsWithShortcut("<key>muteSpeaker</key><true/>");
    }

    static int presentations() {
        const auto* value = std::getenv("TAVRO_PRESENTATIONS");
        return value ? std::atoi(value) : 24;
    }
    void turn(bool isOn) {
        pressShortcut();
        ASSERT_TRUE(server.eventually(isOn ? "the button" : "the item alone",
                                      [&] { return isOn ? tray.showsItemAndButton() : tray.showsItem(); }));
    }
    void plugScreen(bool isIn) {
        ASSERT_TRUE(Session::run(isIn ? "xrandr --output DUMMY1 --mode 1440x900 --right-of DUMMY0"
                                      : "xrandr --output DUMMY1 --off"));
        ASSERT_TRUE(
            server.eventually("the screens", [&] { return server.screens().size() == (isIn ? 2 : 1); }));
    }

    /// In each presentation something goes that was there when it began, and something else comes.
    void present(int number) {
        std::optional<ClientApplication> before(std::in_place, server, "Before");
        before->addWindow({300, 200, 300, 200});
        turn(true);
        std::optional<ClientApplication> meanwhile;
        switch (number % 3) {
        case 0:
            before.reset();
            meanwhile.emplace(server, "Meanwhile").addWindow({400, 300, 300, 200});
            break;
        case 1:
            audio.plugInMicrophone("mic_3");
            turn(false);
            audio.unplug("mic_3");
            return;
        case 2:
            plugScreen(false);
            plugScreen(true);
            break;
        }
        turn(false);
    }
    Footprint footprintAfter(int first, int last) {
        for (int number = first; number < last && !HasFatalFailure(); ++number) {
            present(number);
            tavro->output(); // or the pipe would be full, and lines left out
        }
        const auto footprint = Footprint::of(tavro->pid(), server);
        std::cout << last << " presentations: " << footprint.privateKilobytes << " kB, "
                  << footprint.descriptors << " descriptors, " << footprint.threads << " threads, "
                  << footprint.serverResources << " X resources" << std::endl;
        return footprint;
    }

    AudioServer audio;
    std::unique_ptr<TavroProcess> tavro;
};

TEST_F(Soak, RepeatedPresentationsLeaveNothingBehind) {
    tavro = launch();
    const int all = presentations(), third = all / 3;
    const auto early = footprintAfter(0, third);
    footprintAfter(third, 2 * third);
    footprintAfter(2 * third, all);
    Footprint late;
#ifdef __SANITIZE_ADDRESS__
    constexpr long noise = 1 << 20; // what has been freed is kept, to find who uses it
#else
    constexpr long noise = 4096;
#endif
    constexpr long allowedEach = 1; // kilobytes
    // A screen's pixels may just be on their way out.
    EXPECT_TRUE(server.eventually("no more than after the first third",
                                  [&] {
                                      late = Footprint::of(tavro->pid(), server);
                                      return late.descriptors <= early.descriptors &&
                                             late.serverResources <= early.serverResources &&
                                             late.privateKilobytes <=
                                                 early.privateKilobytes + noise + allowedEach * all;
                                  }))
        << late.descriptors << " descriptors, " << late.serverResources << " X resources, "
        << late.privateKilobytes << " kB";
    EXPECT_EQ(tavro->errors(), "");
    EXPECT_TRUE(isRestored());
    quit(tavro);
}
