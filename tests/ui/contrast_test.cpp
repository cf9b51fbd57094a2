#include "support/machines/UiTest.h"

#include "toolkit/Colors.h"
#include "toolkit/Icons.h"
#include "toolkit/Look.h"
#include "toolkit/OutlinedStyle.h"
#include "ui/popover/CustomToogleButton.h"
#include "ui/popover/SimpleToogleButton.h"
#include "ui/preferences/Recorder.h"
#include "ui/preferences/RecorderCocoa.h"

#include <QCheckBox>
#include <QPushButton>
#include <QStyleFactory>

namespace tavro {
namespace {

/// In each look: text is seen with a contrast of 4.5 (7 where the theme wants more), all else with 3.
class ContrastTest : public UiTest, public testing::WithParamInterface<Look> {
protected:
    ContrastTest() {
        QApplication::setStyle(new OutlinedStyle);
        QApplication::setPalette(paletteOf(GetParam()));
    }
    ~ContrastTest() override {
        QApplication::setStyle(QStyleFactory::create("fusion"));
        QApplication::setPalette(QPalette());
    }
    /// Where it can be told from what is around it.
    static QRectF seen(const Drawing& drawing, QColor around, QRectF area = {}) {
        return drawing.bounds([&](QColor color) { return contrast(color, around) >= 3; }, area);
    }
    static QColor color(QPalette::ColorRole role) {
        const auto palette = QApplication::palette();
        return palette.color(role);
    }
};
INSTANTIATE_TEST_SUITE_P(Of, ContrastTest,
                         testing::Values(Look{false, false}, Look{true, false}, Look{false, true},
                                         Look{true, true}));

TEST_P(ContrastTest, TextIsLegible) {
    using enum QPalette::ColorRole;
    const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[] = {
        {WindowText, Window},         {Text, Base},   {Text, AlternateBase}, {ButtonText, Button},
        {HighlightedText, Highlight}, {Link, Window}, {LinkVisited, Window}, {ToolTipText, ToolTipBase},
        {PlaceholderText, Base},
    };
    for (const auto& [text, ground] : pairs)
        EXPECT_GE(contrast(color(text), color(ground)), GetParam().hasHighContrast ? 7 : 4.5)
            << text << " on " << ground;
    for (const auto& ground : {InAppAlert::backgroundColor, Color{0.36, 0.72, 0.36, 1}, Color{0.75, 0, 0, 1}})
        EXPECT_GE(contrast(legibleOn(toolkitColor(ground)), toolkitColor(ground)), 4.5);
}

TEST_P(ContrastTest, ControlsAreSeen) {
    const auto window = color(QPalette::Window);
    chooseWallpaper();
    auto& preferences = this->preferences();
    settle();
    for (auto* control : std::initializer_list<QWidget*>{&find<QPushButton>(preferences),
                                                         &find<RecorderCocoa>(preferences)}) {
        const auto shown = seen(Drawing(*control), window);
        EXPECT_GE(shown.width(), control->width() - 4.0) << control->metaObject()->className();
        EXPECT_GE(shown.height(), control->height() - 4.0);
    }
    auto& box = find<QCheckBox>(preferences);
    for (const bool isOn : {false, true}) {
        box.setChecked(isOn);
        const auto shown = seen(Drawing(box), window, QRectF(0, 0, 16, box.height()));
        EXPECT_NEAR(shown.width(), shown.height(), 1);
        EXPECT_GE(shown.width(), 12) << isOn;
    }

    CustomToogleButton button(
        "", ContentView::headerStyle(), [] {}, nullptr);
    button.resize(button.sizeHint());
    for (const bool isOn : {false, true}) {
        SCOPED_TRACE(isOn);
        button.setIsOn(isOn);
        const Drawing drawing(button, 2);
        const QRectF track(243, 7.5, 63, 32), knob(isOn ? 271 : 243, 6, 35, 35);
        EXPECT_GE(seen(drawing, window).width(), track.width() - 2);
        EXPECT_GE(seen(drawing, Qt::white, knob).width(), 34) << "the edge of the knob";
        EXPECT_GE(contrast(drawing.at(knob.center().x(), knob.center().y()), Qt::black), 20);
    }
    button.show();
    button.activateWindow();
    ASSERT_TRUE(comesTo("the window", [&] { return button.isActiveWindow(); }));
    button.clearFocus(); // which came with the window
    button.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(seen(Drawing(button), window), QRectF(button.rect())) << "the ring";

    SimpleToogleButton row(
        "", [] {}, nullptr);
    row.setIsOn(true);
    row.resize(row.sizeHint());
    EXPECT_GE(seen(Drawing(row), window).width(), 13) << "the check mark";
}

// The panel does not say which colour it has: as seen on GNOME, KDE, Cinnamon, MATE and Xfce.
TEST(TrayIconContrast, ItIsSeenOnAnyPanel) {
    for (const auto* panel : {"black", "#292d32", "#3b3f40", "#555555", "#cecece", "#f6f5f4"})
        for (const auto* icon : {"menubar-off", "menubar-on"}) {
            const Drawing drawing({22, 22}, 1, panel, [&](QImage& image) {
                QPainter painter(&image);
                toolkitIcon({icon}).paint(&painter, image.rect());
            });
            const auto shown = drawing.bounds([&](QColor color) { return contrast(color, panel) >= 3; });
            EXPECT_GE(shown.width(), 17) << icon << " on " << panel;
        }
}

} // namespace
} // namespace tavro
