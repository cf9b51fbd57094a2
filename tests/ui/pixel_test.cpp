#include "support/machines/UiTest.h"

#include "audio/AlertView.h"
#include "desktop/CustomWallpaper.h"
#include "ui/controls/Divider.h"
#include "ui/painting/CoverPainting.h"
#include "ui/popover/CustomToogleButton.h"
#include "ui/popover/InAppAlertButton.h"
#include "ui/popover/SimpleToogleButton.h"
#include "ui/preferences/WallpaperPreview.h"

#include <QPushButton>
#include <QVariantAnimation>

namespace tavro {
namespace {

/// At two pixels a point.
class PixelTest : public UiTest {
protected:
    PixelTest() {
        auto palette = QApplication::palette();
        palette.setColor(QPalette::Window, "white");
        palette.setColor(QPalette::WindowText, "#102030");
        QApplication::setPalette(palette);
    }
    ~PixelTest() override { QApplication::setPalette(QPalette()); }

    /// A button in its own size, without the margin around its content.
    static Drawing drawing(ToogleButton& button) {
        button.resize(button.sizeHint());
        const auto content = button.rect().marginsRemoved(QMargins() + ToogleButton::margin);
        return {content.size(), pixelRatio, "white",
                [&](QImage& image) { button.render(&image, {}, content, QWidget::DrawChildren); }};
    }
    static void expect(const Drawing& drawing,
                       std::initializer_list<std::tuple<double, double, const char*>> places,
                       int tolerance = 3) {
        for (const auto& [x, y, color] : places)
            EXPECT_THAT(drawing.at(x, y), IsColor(color, tolerance)) << "at " << x << "," << y;
    }
    static constexpr int pixelRatio = 2;
};

// The track is 63 by 32 points at the right end of 300 by 35, the knob a circle of 35.
TEST_F(PixelTest, TheBigSwitchMovesItsKnobAndTakesColour) {
    CustomToogleButton button(
        "On air", ContentView::headerStyle(), [] {}, nullptr);
    auto& knob = find<QVariantAnimation>(button);
    const auto off = drawing(button);
    expect(
        off,
        {{238.5, 17.5, "white"}, {273.5, 17.5, "#808080"}, {280.5, 3.5, "#808080"}, {298.5, 4.5, "white"}});
    EXPECT_LT(off.ink({0, 0, 230, 35}).left(), 4);
    EXPECT_NEAR(off.ink({0, 0, 230, 35}).center().y(), 17.5, 4);

    button.click();
    button.setIsOn(true);
    EXPECT_EQ(knob.duration(), 200);
    knob.setCurrentTime(100); // 68 % of the way, on a curve that begins fast
    expect(drawing(button), {{245.5, 17.5, "#a8a4e3"}, {257.5, 17.5, "white"}, {296.5, 17.5, "#f1db7e"}}, 4);
    knob.setCurrentTime(200);
    expect(drawing(button), {{240.5, 17.5, "#858bfe"}, {262.5, 17.5, "#d6957b"}, {260.5, 30.5, "#bd92a3"}});
    button.setIsOn(false); // not by a tap
    expect(drawing(button), {{254.5, 17.5, "white"}, {280.5, 17.5, "#808080"}});
}

TEST_F(PixelTest, ARowHasACheckMarkOf16By12PointsWhileItIsOn) {
    SimpleToogleButton row(
        "Mute", [] {}, nullptr);
    const QRectF end(270, 0, 30, row.sizeHint().height() - 12.0);
    EXPECT_TRUE(drawing(row).ink(end).isEmpty());
    row.setIsOn(true);
    const auto shown = drawing(row);
    const auto check = shown.ink(end);
    EXPECT_NEAR(check.left(), 282, 1);
    EXPECT_NEAR(check.right(), 296, 1);
    EXPECT_NEAR(check.height(), 11, 1);
    EXPECT_THAT(shown.at(286.8, check.bottom() - 1.5), IsColor("#102030", 40));
}

TEST_F(PixelTest, TheBannerIsOneColourWithBlackTextInside) {
    InAppAlertButton banner(
        {"New version"}, [] {}, nullptr);
    banner.resize(340, banner.sizeHint().height());
    EXPECT_EQ(banner.height(), banner.fontMetrics().height() + 20);
    const Drawing shown(banner, pixelRatio);
    expect(shown, {{0.4, 0.4, "#666dff"}, {339.5, banner.height() - 0.5, "#666dff"}});
    const auto text = shown.bounds([](QColor color) { return color.blue() < 120; });
    EXPECT_NEAR(text.left(), 22, 2);
    EXPECT_LT(text.right(), 200);
    EXPECT_GE(text.top(), 10);
    EXPECT_LE(text.bottom(), banner.height() - 10);
}

TEST_F(PixelTest, TheIndicatorShowsItsImageAboveItsText) {
    const auto isWhite = [](QColor color) { return color.alpha() > 200 && color.green() > 200; };
    const auto isRed = [](QColor color) { return color.red() > 200 && color.green() < 130; };
    for (const bool mutestate : {true, false}) {
        const AlertView alert(mutestate);
        const Drawing shown({200, 200}, pixelRatio, Qt::transparent, [&](QImage& image) {
            QPainter painter(&image);
            contentOf(HostingView<AlertView>(alert)).draw(painter, {0, 0, 200, 200});
        });
        alert.window->close(); // which holds it, too
        expect(shown, {{199.4, 100, "#99000000"}, {192.5, 192.5, "#99000000"}, {195.5, 4.5, "#00000000"}});
        EXPECT_EQ(shown.bounds(isRed).isEmpty(), !mutestate);
        const double textHeight = QFontMetricsF(QApplication::font()).height();
        const QRectF image(54, 100 - (92 + 8 + textHeight) / 2, 92, 92);
        const auto picture = shown.bounds(isWhite, {0, 0, 200, image.bottom()});
        EXPECT_TRUE(image.adjusted(-0.5, -0.5, 0.5, 0.5).contains(picture));
        EXPECT_GT(picture.height(), 70); // it fills that place
        const auto text = shown.bounds(isWhite, {0, image.bottom(), 200, 200 - image.bottom()});
        EXPECT_NEAR(text.center().x(), 100, 1.5);
        EXPECT_NEAR(text.center().y(), image.bottom() + 8 + textHeight / 2, 3);
    }
}

TEST_F(PixelTest, ThePreviewIsStretchedWithinABlackBorderOfOnePoint) {
    chooseWallpaper();
    const auto image = mac.images().contentsOf(customWallpaperURL().value());
    for (const bool hasImage : {true, false}) {
        WallpaperPreview preview(nullptr);
        preview.setImage(hasImage ? &*image : nullptr);
        preview.resize(preview.minimumSize());
        EXPECT_EQ(preview.size(), QSize(240, 100));
        const auto* inside = hasImage ? "#3366cc" : "white";
        expect(Drawing(preview, pixelRatio),
               {{0.9, 50, "black"}, {1.1, 50, inside}, {238.9, 50, inside}, {239.9, 99.9, "black"}});
    }
}

TEST_F(PixelTest, ACoversTextIsLegibleOnAnyBackground) {
    for (const auto background : {Qt::black, Qt::white}) {
        QImage image(200, 50, QImage::Format_RGB32);
        image.fill(background);
        QPainter painter(&image);
        paintCover(CenteredText{"Error loading image"}, painter, image.rect());
        painter.end();
        int contrasting = 0;
        for (int x = 0; x < image.width(); ++x)
            for (int y = 0; y < image.height(); ++y)
                contrasting += std::abs(image.pixelColor(x, y).red() - QColor(background).red()) > 200;
        EXPECT_GT(contrasting, 50);
    }
}

// In points, between what the margins of the buttons leave.
TEST_F(PixelTest, ThePopoverStacksItsParts) {
    publishNewVersion();
    const auto widget = popover();
    widget->show();
    const auto place = [&](const QWidget& child, int margin) {
        return QRect(child.mapTo(widget.get(), QPoint()), child.size()).marginsRemoved(QMargins() + margin);
    };
    const auto row = [&](int index) { return place(find<SimpleToogleButton>(*widget, index), 6); };
    const auto header = place(find<CustomToogleButton>(*widget), 6);
    const auto divider = place(find<Divider>(*widget), 0);
    const auto banner = place(find<InAppAlertButton>(*widget), 0);
    const int line = widget->fontMetrics().height();
    EXPECT_EQ(header, QRect(20, header.top(), 300, 35));
    EXPECT_EQ(divider, QRect(0, header.bottom() + 1 + 9 + 8, 340, 1));
    EXPECT_EQ(row(0), QRect(20, divider.bottom() + 1 + 8 + 20, 300, line));
    EXPECT_EQ(row(1), row(0).translated(0, line + 10 + 8));
    EXPECT_EQ(banner.topLeft(), QPoint(0, row(4).bottom() + 1 + 10 + 20 + 8 - 15));
    EXPECT_EQ(banner.width(), 340);
    EXPECT_NEAR(header.top() - 20, 400 - banner.bottom() - 1, 1); // centred
}

} // namespace
} // namespace tavro
