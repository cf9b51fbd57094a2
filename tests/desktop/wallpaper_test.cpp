#include "platform/linux/process/QtMainQueue.h"
#include "platform/linux/windows/DesktopWallpaper.h"

#include "platform/linux/windows/QtScreens.h"
#include "support/machines/LinuxMachineTest.h"
#include "toolkit/Pixels.h"

#include <atomic>
#include <csignal>
#include <mutex>

namespace {

using namespace tavro;

DesktopBackground colored(std::uint32_t color) {
    DesktopBackground background;
    background.style.colors[0] = color;
    return background;
}

class Wallpaper : public InProcessTest {
protected:
    void answer(DesktopWallpaper::Backgrounds backgrounds) {
        const std::lock_guard lock(m_mutex);
        m_backgrounds = std::move(backgrounds);
    }
    /// The colours of a screen's corners; none for one that has no picture.
    std::vector<QRgb> corners(const QRect& screen) {
        std::vector<QRgb> colors;
        if (const auto image = wallpaper.ownPicture(screen)) {
            const auto pixels = toolkitImage(*image);
            EXPECT_EQ(pixels.size(), screen.size());
            colors = {pixels.pixel(0, 0), pixels.pixel(screen.width() - 1, screen.height() - 1)};
        }
        return colors;
    }

    static constexpr QRect first{0, 0, 1920, 1080}, second{1920, 0, 1440, 900};
    StreamLog log;
    std::unique_ptr<XConnection> x = XConnection::open(log);
    QtMainQueue queue;
    DesktopSnapshots snapshots{*x, queue};
    QtScreens screens{*x};
    std::atomic<int> questions = 0;
    DesktopWallpaper wallpaper{*x, snapshots, screens, TAVRO_PICTURE_BINARY, [this](const auto& known) {
                                   ++questions;
                                   EXPECT_EQ(known.size(), 2u);
                                   EXPECT_EQ(known.back().pixels, second);
                                   const std::lock_guard lock(m_mutex);
                                   return m_backgrounds;
                               }};

private:
    std::mutex m_mutex;
    DesktopWallpaper::Backgrounds m_backgrounds;
};

TEST_F(Wallpaper, IsDrawnWhenTheServerHasNoPicture) {
    int changes = 0;
    const auto observation = wallpaper.onChange([&] { ++changes; });
    x->start();
    ASSERT_TRUE(wallpaper.pixmap());
    auto over = colored(0x000080);
    over.style.colors[1] = 0x800000;
    over.style.shading = BackgroundStyle::Shading::horizontal;
    over.spansScreens = true;
    answer({colored(0x102030), over});
    Session::signal("xfdesktop", SIGKILL); // and its picture goes with it
    ASSERT_TRUE(shows("no picture of the server's", [&] { return !wallpaper.pixmap(); }));
    EXPECT_EQ(questions, 0);
    wallpaper.renewSoon();
    ASSERT_TRUE(shows("the first pictures", [&] { return changes == 1; }));
    EXPECT_EQ(corners(first), (std::vector<QRgb>{0xff102030, 0xff102030}));
    const auto beginAndEnd = corners(second);
    EXPECT_GT(qRed(beginAndEnd[0]), 0x40); // more than half of the way
    EXPECT_GT(qRed(beginAndEnd[1]), 0x7c);
    const auto part = wallpaper.ownPicture(second.adjusted(40, 30, -10, -10));
    EXPECT_EQ(part->pixels.get(), wallpaper.ownPicture(second)->pixels.get() + 30 * part->bytesPerRow + 160);
    EXPECT_FALSE(wallpaper.ownPicture(first | second));

    answer({std::nullopt, colored(0x405060)}); // the first has not been answered
    wallpaper.renewSoon();
    ASSERT_TRUE(shows("another picture", [&] { return changes == 2; }));
    EXPECT_EQ(corners(first).front(), 0xff102030);
    EXPECT_EQ(corners(second).front(), 0xff405060);

    Session::start("xfdesktop");
    EXPECT_TRUE(shows("the server's picture alone",
                      [&] { return wallpaper.pixmap() && !wallpaper.hasOwnPictures() && changes > 2; }));
}

} // namespace
