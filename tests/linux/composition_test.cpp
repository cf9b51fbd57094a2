#include "picture/Composition.h"

#include "platform/linux/storage/PictureProcess.h"
#include "support/TemporaryFolder.h"
#include "toolkit/Pixels.h"

#include <QCoreApplication>
#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace tavro {
namespace {

using Scaling = BackgroundStyle::Scaling;
using Scaler = BackgroundStyle::Scaler;
using Shading = BackgroundStyle::Shading;

/// As desktops were seen to do it, to the pixel.
TEST(Composition, PlacesAPictureLikeEachDesktop) {
    const QSize screen(1920, 1080), big(2500, 1700), small(333, 217);
    const QRect area({}, screen), all(-1920, 0, 3360, 1080);
    const std::tuple<Scaling, Scaler, QSize, QRect, QRect> cases[] = {
        {Scaling::centered, Scaler::toolkit, small, area, {793, 431, 333, 217}},
        {Scaling::centered, Scaler::toolkit, big, area, {-290, -310, 2500, 1700}},
        {Scaling::tiled, Scaler::toolkit, small, all, {-1920, 0, 333, 217}},
        {Scaling::stretched, Scaler::gdkPixbuf, small, all, all},
        {Scaling::fitted, Scaler::toolkit, big, area, {166, 0, 1588, 1080}},
        {Scaling::fitted, Scaler::toolkitRoundingUp, big, area, {165, 0, 1589, 1080}},
        {Scaling::fitted, Scaler::gdkPixbuf, big, area, {166, 0, 1588, 1080}},
        {Scaling::fitted, Scaler::toolkit, {10000, 1}, area, {0, 539, 1920, 1}},
        {Scaling::fitted, Scaler::texture, small, area, {132, 0, 1657, 1080}},
        {Scaling::zoomed, Scaler::toolkit, small, area, {0, -85, 1920, 1251}},
        {Scaling::zoomed, Scaler::toolkitRoundingUp, small, area, {0, -86, 1920, 1252}},
        {Scaling::zoomed, Scaler::gdkPixbuf, small, area, {0, -85, 1919, 1251}},
        {Scaling::zoomed, Scaler::toolkit, big, all, {-1920, -602, 3360, 2284}},
    };
    for (const auto& [scaling, scaler, picture, around, place] : cases) {
        const Composition composition{{scaling, Shading::solid, scaler, {}}, screen, around};
        EXPECT_EQ(composition.placeOf(picture), place)
            << static_cast<int>(scaling) << ' ' << static_cast<int>(scaler) << ' ' << picture.width();
    }
}

/// What the program that draws makes of a picture, red above and blue below, 4 pixels wide and 8 high, on a
/// screen of 16 by 8: its middle row. Green is the desktop's colour.
TEST(Composition, TheHelperProgramDrawsIt) {
    int count = 0;
    const QCoreApplication application(count, nullptr);
    const TemporaryFolder folder;
    const auto file = folder.path() / "picture.png", drawing = folder.path() / "drawing.svg",
               none = folder.path() / "none.png";
    QImage picture(4, 8, QImage::Format_RGB32);
    picture.fill(Qt::red);
    std::fill_n(reinterpret_cast<QRgb*>(picture.scanLine(4)), 16, qRgb(0, 0, 255));
    ASSERT_TRUE(picture.save(QString::fromStdString(file.string())));
    std::ofstream(drawing) << "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='8'>"
                              "<path d='M0 4h4v4H0z' fill='#00f'/></svg>";
    std::ofstream(none) << "no picture";
    const QRect screen(0, 0, 16, 8), all(-16, 0, 32, 8);
    const struct {
        const char* what;
        std::filesystem::path file;
        Scaling scaling;
        Scaler scaler;
        QRect area;
        std::string row;
        Shading shading = Shading::solid;
    } cases[] = {
        {"centred", file, Scaling::centered, Scaler::toolkit, screen, "      BBBB      "},
        {"tiled", file, Scaling::tiled, Scaler::toolkit, screen, "BBBBBBBBBBBBBBBB"},
        {"stretched", file, Scaling::stretched, Scaler::toolkit, screen, "BBBBBBBBBBBBBBBB"},
        {"fitted by GdkPixbuf", file, Scaling::fitted, Scaler::gdkPixbuf, screen, "      BBBB      "},
        {"zoomed by GdkPixbuf", file, Scaling::zoomed, Scaler::gdkPixbuf, {0, 0, 16, 16}, "RRRRRRRRRRRRRRRR"},
        {"centred over two screens", file, Scaling::centered, Scaler::toolkit, all, "BB              "},
        {"somewhere else", file, Scaling::centered, Scaler::toolkit, {-16, 0, 16, 8}, "                "},
        {"centred by Qt Quick", file, Scaling::centered, Scaler::quick, screen, "      BBBB      "},
        {"tiled by Qt Quick", drawing, Scaling::tiled, Scaler::quick, screen, "BBBBBBBBBBBBBBBB"},
        {"fitted as a texture", file, Scaling::fitted, Scaler::texture, screen, "      BBBB      "},
        {"fitted by Qt Quick", file, Scaling::fitted, Scaler::quick, screen, "      BBBB      "},
        {"zoomed by Qt Quick", drawing, Scaling::zoomed, Scaler::quick, screen, "BBBBBBBBBBBBBBBB"},
        {"a drawing", drawing, Scaling::centered, Scaler::toolkit, screen, "      BBBB      "},
        {"a colour", {}, Scaling::zoomed, Scaler::toolkit, screen, "                "},
        {"a gradient", {}, Scaling::zoomed, Scaler::toolkit, all, "<<<<<<<<<<<<<<<<", Shading::horizontal},
        {"no picture", none, Scaling::zoomed, Scaler::toolkit, screen, ""},
    };
    for (const auto& [what, path, scaling, scaler, area, expected, shading] : cases) {
        SCOPED_TRACE(what);
        const Composition composition{{scaling, shading, scaler, {0x00ff00, 0x0000ff}}, screen.size(), area};
        PictureProcess process;
        ASSERT_TRUE(process.decode(TAVRO_PICTURE_BINARY, path, composition.arguments(), {}));
        process.wait();
        std::string row;
        const auto image = process.image();
        for (int x = 0; image && x < image->pixelWidth; ++x) {
            const auto color = toolkitImage(*image).pixel(x, 5);
            row += color == 0xff00ff00   ? ' '
                   : color == 0xff0000ff ? 'B'
                   : color == 0xffff0000 ? 'R'
                   : qBlue(color) > 120  ? '<'
                                         : '?';
        }
        EXPECT_EQ(row, expected);
    }
}

TEST(Composition, InvalidArgumentsAreRejected) {
    const auto whole = Composition{{}, {16, 8}, {0, 0, 16, 8}}.arguments();
    EXPECT_TRUE(Composition::parse(whole));
    for (const auto& [index, text] :
         {std::pair(0, "0"), {1, "16385"}, {4, "-1"}, {5, "x"}, {2, "99999999999"}}) {
        auto arguments = whole;
        arguments[index] = text;
        EXPECT_FALSE(Composition::parse(arguments)) << index;
    }
    EXPECT_FALSE(Composition::parse(whole.mid(1)));
}

} // namespace
} // namespace tavro
