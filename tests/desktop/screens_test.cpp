#include "support/DesktopTest.h"

class Screens : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        ASSERT_EQ(server.screens().size(), 2u);
        m_second = server.screenshot(partOfSecond);
    }

    void unplugSecond() {
        ASSERT_TRUE(Session::run("xrandr --output DUMMY1 --off"));
        ASSERT_TRUE(server.eventually("one screen", [this] { return server.screens().size() == 1; }));
    }

    void TearDown() override {
        EXPECT_TRUE(Session::run("xrandr --output DUMMY1 --mode 1440x900 --right-of DUMMY0"));
        EXPECT_TRUE(server.eventually("two screens", [this] { return server.screens().size() == 2; }));
        EXPECT_TRUE(server.eventually("the wallpaper of the second screen", [this] {
            return server.screenshot(partOfSecond) == m_second && server.wallpaper(partOfSecond) == m_second;
        }));
        DesktopTest::TearDown();
    }

private:
    static constexpr Rect partOfSecond{3000, 0, 360, 900}; // without icons or windows
    Pixels m_second;
};

TEST_F(Screens, ASingleScreenHasOneCover) {
    unplugSecond();
    auto tavro = launch();
    toggle(*tavro);
    EXPECT_TRUE(everyScreenIsCovered());
    ASSERT_EQ(covers(*tavro).size(), 1u);
    EXPECT_EQ(server.place(covers(*tavro).front()), server.screens().front());
    toggle(*tavro);
    EXPECT_TRUE(everyIconShows());
    quit(tavro);
}

TEST_F(Screens, AScreenMayBeUnpluggedWhileItIsCovered) {
    const auto stacking = server.applicationWindows();
    const auto front = server.active();
    auto tavro = launch();
    toggle(*tavro);
    ASSERT_TRUE(everyScreenIsCovered());
    unplugSecond();
    toggle(*tavro);
    EXPECT_TRUE(server.eventually("no cover", [&] { return covers(*tavro).empty(); }));
    EXPECT_TRUE(isRestored(stacking, front));
    quit(tavro);
    EXPECT_EQ(complaints(*tavro), "");
}
