#include "support/desktop/DesktopTest.h"

#include <csignal>

class LostServer : public DesktopTest {
    void TearDown() override {} // there is nothing left to look at
};

// The only test of its session, which it destroys.
TEST_F(LostServer, LosingTheXServerEndsTheProcessWithOneMessage) {
    auto tavro = launch();
    toggle(*tavro);
    Session::signal("xorg", SIGKILL);
    EXPECT_EQ(tavro->end(), "exited with 1");
    EXPECT_EQ(lines(complaints(*tavro)), 1) << complaints(*tavro);
}
