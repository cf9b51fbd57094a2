#include "support/desktop/DesktopTest.h"

class Screens : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        ASSERT_EQ(server.screens().size(), 2u);
        m_second = server.screenshot(partOfSecond);
    }

    /// As wide and high as no scale divides: 1365x767 pixels.
    void setOddSecond() {
        const Rect part{3000, 0, 285, 700};
        const auto before = server.screenshot(part);
        ASSERT_TRUE(Session::run(
            "xrandr --newmode odd 85.5 1365 1436 1579 1792 767 771 774 798 +hsync +vsync 2>/dev/null; "
            "xrandr --addmode DUMMY1 odd && xrandr --output DUMMY1 --mode odd --right-of DUMMY0"));
        ASSERT_TRUE(server.eventually("the wallpaper of another size", [&] {
            const auto shown = server.screenshot(part);
            return shown != before && shown == server.wallpaper(part);
        }));
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

TEST_F(Screens, UnpluggingACoveredScreenKeepsItsWindow) {
    auto tavro = launch();
    openPreferences();
    ASSERT_TRUE(server.eventually("the preferences",
                                  [&] { return windows(*tavro) == std::vector{server.active()}; }));
    const auto window = server.active();
    const auto stacking = server.applicationWindows();
    ASSERT_TRUE(Session::run("xdotool windowmove " + std::to_string(window) + " 2400 300"));
    ASSERT_TRUE(server.eventually("it on the second screen", [&] { return server.place(window).x > 2300; }));
    toggle(*tavro);
    ASSERT_TRUE(everyScreenIsCovered());
    ASSERT_TRUE(Session::run("xrandr --output DUMMY1 --off"));
    ASSERT_TRUE(server.eventually("one screen", [this] { return server.screens().size() == 1; }));
    EXPECT_TRUE(server.eventually("the window wholly on the first screen", [&] {
        const auto place = server.place(window);
        return place.x >= 0 && place.x + place.width <= 1920 && place.y >= 0 &&
               place.y + place.height <= 1080;
    }));
    toggle(*tavro);
    EXPECT_TRUE(isRestored(stacking, window));
    EXPECT_EQ(windows(*tavro), std::vector{window});
    quit(tavro);
    EXPECT_EQ(complaints(*tavro), "");
}

TEST_F(Screens, CoversAreExactAtEveryScaleOfTheToolkit) {
    setOddSecond();
    for (const auto* scale : {"1.25", "1.5", "1.75", "2"}) {
        SCOPED_TRACE(scale);
        auto scaled = settings();
        scaled.environment["QT_SCALE_FACTOR"] = scale;
        auto tavro = launch(scaled);
        toggle(*tavro);
        EXPECT_TRUE(everyScreenIsCovered());
        toggle(*tavro);
        EXPECT_TRUE(server.eventually("no cover", [&] { return covers(*tavro).empty(); }));
        quit(tavro);
    }
}
