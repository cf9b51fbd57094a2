#include "support/UiTest.h"

#include "audio/AlertView.h"
#include "platform/simulated/storage/SimulatedImages.h"
#include "ui/controls/Divider.h"
#include "ui/popover/CustomToogleButton.h"
#include "ui/popover/InAppAlertButton.h"
#include "ui/popover/SimpleToogleButton.h"
#include "ui/preferences/WallpaperPreview.h"

#include <QVariantAnimation>

namespace tavro {
namespace {

struct Place {
    double x, y;
    const char* color;
};

/// At two pixels a point.
class PixelTest : public UiTest {
protected:
    PixelTest() {
        auto palette = QApplication::palette();
        for (const auto& [role, color] :
             {std::pair(QPalette::Window, "white"), {QPalette::WindowText, "#102030"}})
            palette.setColor(role, color);
        QApplication::setPalette(palette);
    }
    ~PixelTest() override { QApplication::setPalette(QPalette()); }

    /// A button in its own size, without the margin around its content.
    Drawing drawing(ToogleButton& button) const {
        button.resize(button.sizeHint());
        const auto content = button.rect().marginsRemoved(QMargins() + ToogleButton::margin);
        return {content.size(), pixelRatio, "white",
                [&](QImage& image) { button.render(&image, {}, content, QWidget::DrawChildren); }};
    }
    static constexpr int pixelRatio = 2;
    static void expect(const Drawing& drawing, std::initializer_list<Place> places, int tolerance = 2) {
        for (const auto& [x, y, color] : places)
            EXPECT_THAT(drawing.at(x, y), IsColor(color, tolerance)) << "at " << x << "," << y;
    }
};
// The track is 63 by 32 points at the right end of 300 by 35, the knob a circle of 35.
TEST_F(PixelTest, TheBigSwitch) {
    CustomToogleButton button(
        "On air", ContentView::headerStyle(), [] {}, nullptr);
    auto& knob = find<QVariantAnimation>(button);
    const auto off = drawing(button);
    expect(off, {{254.5, 17.5, "white"},
                 {238.5, 17.5, "white"},
                 {273.5, 17.5, "#808080"},
                 {280.5, 3.5, "#808080"},
                 {298.5, 4.5, "white"}});
    const auto label = off.ink({0, 0, 230, 35});
    EXPECT_LT(label.left(), 4);
    EXPECT_NEAR(label.center().y(), 17.5, 4);

    button.click();
    button.setIsOn(true);
    EXPECT_EQ(knob.duration(), 200);
    knob.setCurrentTime(100); // 68 % of the way, on a curve that begins fast
    expect(drawing(button), {{245.5, 17.5, "#a8a4e3"}, {257.5, 17.5, "white"}, {296.5, 17.5, "#f1db7e"}}, 4);
    knob.setCurrentTime(200);
    expect(drawing(button), {{240.5, 17.5, "#858bfe"},
                             {262.5, 17.5, "#d6957b"},
                             {260.5, 30.5, "#bd92a3"},
                             {238.5, 4.5, "white"},
                             {282.5, 17.5, "white"}});
    button.setIsOn(false); // not by a tap
    EXPECT_EQ(knob.state(), QAbstractAnimation::Stopped);
    expect(drawing(button), {{254.5, 17.5, "white"}, {280.5, 17.5, "#808080"}});
}

TEST_F(PixelTest, ARowHasACheckMarkOf16By12PointsWhileItIsOn) {
    SimpleToogleButton row(
        "Mute", [] {}, nullptr);
    EXPECT_TRUE(drawing(row).ink({270, 0, 30, row.sizeHint().height() - 12.0}).isEmpty());
    row.setIsOn(true);
    const auto shown = drawing(row);
    const auto check = shown.ink({270, 0, 30, row.sizeHint().height() - 12.0});
    EXPECT_GE(check.left(), 284);
    EXPECT_LT(check.left(), 286);
    EXPECT_GT(check.right(), 298);
    EXPECT_LE(check.height(), 12);
    EXPECT_GT(check.height(), 9);
    EXPECT_THAT(shown.at(289.8, check.bottom() - 1.5), IsColor("#102030", 40));
}

TEST_F(PixelTest, TheBannerIsOneColourWithWhiteTextInside) {
    InAppAlertButton banner(
        {"New version"}, [] {}, nullptr);
    banner.resize(340, banner.sizeHint().height());
    EXPECT_EQ(banner.height(), banner.fontMetrics().height() + 20);
    const Drawing shown(banner, pixelRatio);
    expect(shown, {{0.4, 0.4, "#666dff"}, {339.5, banner.height() - 0.5, "#666dff"}}, 1);
    const auto text = shown.bounds([](QColor color) { return color.green() > 160; });
    EXPECT_GE(text.left(), 20);
    EXPECT_LT(text.left(), 24);
    EXPECT_LT(text.right(), 200);
    EXPECT_GE(text.top(), 10);
    EXPECT_LE(text.bottom(), banner.height() - 10);
}

TEST_F(PixelTest, TheIndicator) {
    const auto isWhite = [](QColor color) { return color.alpha() > 200 && color.green() > 200; };
    const auto isRed = [](QColor color) { return color.red() > 200 && color.green() < 130; };
    for (const bool mutestate : {true, false}) {
        SCOPED_TRACE(mutestate);
        const AlertView alert(mutestate);
        const Drawing shown({200, 200}, pixelRatio, Qt::transparent, [&](QImage& image) {
            QPainter painter(&image);
            paintView(HostingView<AlertView>(alert), painter, {0, 0, 200, 200});
        });
        expect(shown, {{100, 0.6, "#99000000"},
                       {199.4, 100, "#99000000"},
                       {192.5, 192.5, "#99000000"},
                       {195.5, 4.5, "#00000000"}});
        const double textHeight = QFontMetricsF(QApplication::font()).height();
        const QRectF image(54, 100 - (92 + 8 + textHeight) / 2, 92, 92);
        const auto picture = shown.bounds(isWhite, {0, 0, 200, image.bottom()});
        EXPECT_TRUE(image.adjusted(-0.5, -0.5, 0.5, 0.5).contains(picture));
        EXPECT_GT(picture.height(), 70); // it fills that place
        EXPECT_NEAR(picture.center().x(), 100, 1);
        EXPECT_EQ(shown.bounds(isRed).isEmpty(), !mutestate);
        const auto text = shown.bounds(isWhite, {0, image.bottom() + 4, 200, 196 - image.bottom()});
        EXPECT_NEAR(text.center().x(), 100, 1.5);
        EXPECT_GE(text.top(), image.bottom() + 8);
        EXPECT_LE(text.bottom(), image.bottom() + 8 + textHeight);
        EXPECT_GT(text.width(), 50);
        alert.window->close(); // which holds it, too
    }
}

TEST_F(PixelTest, ThePreviewIsStretchedWithinABlackBorderOfOnePoint) {
    const auto file = mac.fileManager().home() / "picture.png";
    SimulatedImages::write(file, 2, 2, 0xFF3366CC);
    const auto image = mac.images().contentsOf(file);
    ASSERT_TRUE(image);
    for (const bool hasImage : {true, false}) {
        SCOPED_TRACE(hasImage);
        WallpaperPreview preview(nullptr);
        preview.setImage(hasImage ? &*image : nullptr);
        EXPECT_EQ(preview.minimumSize(), QSize(240, 100));
        preview.resize(preview.minimumSize());
        const auto* inside = hasImage ? "#3366cc" : "white";
        const Drawing shown(preview, pixelRatio);
        expect(shown,
               {{0.9, 50, "black"},
                {1.1, 50, inside},
                {238.9, 50, inside},
                {239.9, 99.9, "black"},
                {120, 50, inside}},
               3);
    }
}

// In points, between what the margins of the buttons leave.
TEST_F(PixelTest, ThePopoverStacksItsParts) {
    publishNewVersion();
    const auto widget = popover();
    widget->show();
    const auto contentOf = [&](const QWidget& child, int margin) {
        return QRect(child.mapTo(widget.get(), QPoint()), child.size()).marginsRemoved(QMargins() + margin);
    };
    const auto header = contentOf(find<CustomToogleButton>(*widget), 6);
    const auto divider = contentOf(find<Divider>(*widget), 0);
    const auto first = contentOf(find<SimpleToogleButton>(*widget, 0), 6);
    const auto second = contentOf(find<SimpleToogleButton>(*widget, 1), 6);
    const auto last = contentOf(find<SimpleToogleButton>(*widget, 4), 6);
    const auto banner = contentOf(find<InAppAlertButton>(*widget), 0);
    const auto below = [](const QRect& upper, const QRect& lower) {
        return lower.top() - upper.bottom() - 1;
    };
    EXPECT_EQ(header.size(), QSize(300, 35));
    EXPECT_EQ(header.left(), 20);
    EXPECT_EQ(first.size(), QSize(300, widget->fontMetrics().height()));
    EXPECT_EQ(first.left(), 20);
    EXPECT_EQ(below(header, divider), 9 + 8);
    EXPECT_EQ(divider.size(), QSize(340, 1));
    EXPECT_EQ(below(divider, first), 8 + 20);
    EXPECT_EQ(below(first, second), 10 + 8);
    EXPECT_EQ(below(last, banner), 10 + 20 + 8 - 15);
    EXPECT_EQ(banner.width(), 340);
    EXPECT_NEAR(header.top() - 20, 400 - banner.bottom() - 1, 1); // centred
}

} // namespace
} // namespace tavro
