#include "support/machines/UiTest.h"

#include "audio/AlertContent.h"
#include "toolkit/Translation.h"
#include "ui/painting/AlertPainting.h"
#include "ui/popover/CustomToogleButton.h"
#include "ui/popover/InAppAlertButton.h"
#include "ui/popover/SimpleToogleButton.h"
#include "ui/preferences/Recorder.h"
#include "ui/preferences/RowLabel.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTranslator>

#include <cstdlib>

namespace tavro {
namespace {

/// A language whose words are long.
class LongWords final : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char*, const char* text, const char*, int) const override {
        return QString(text) + " Benachrichtigungen";
    }
};

/// With letters of a size that a user may have set, in points: as they are written, in each language that
/// there is, and in one with longer words.
class FontSizeTest : public UiTest, public testing::WithParamInterface<std::tuple<int, const char*>> {
protected:
    FontSizeTest() {
        auto font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
        if (language == "long")
            QCoreApplication::installTranslator(&m_translator);
        else if (language != "en" && !installTranslation(*qApp, language))
            throw std::runtime_error("no such language");
        chooseWallpaper();
    }
    ~FontSizeTest() override {
        qDeleteAll(qApp->findChildren<QTranslator*>());
        QApplication::setLayoutDirection(Qt::LeftToRight);
    }
    /// A place in something of that width; seen in a mirror where one reads from right to left.
    static QRect read(QRect place, int width) {
        if (QApplication::isRightToLeft())
            place.moveLeft(width - place.right() - 1);
        return place;
    }
    static Drawing read(QWidget& widget) {
        return {widget.size(), 1, widget.palette().color(QPalette::Window), [&](QImage& image) {
                    widget.render(&image, {}, {}, QWidget::DrawChildren);
                    image = image.mirrored(QApplication::isRightToLeft(), false);
                }};
    }
    /// A picture for whoever wants to look.
    void keep(QWidget& widget, const char* name) const {
        if (const char* folder = std::getenv("TAVRO_TEST_PICTURES"))
            widget.grab().save(QString("%1/%2-%3-%4.png").arg(folder, name, language).arg(points));
    }

    const int points = std::get<0>(GetParam());
    const QString language = std::get<1>(GetParam());
    static constexpr const char* longText = "Benachrichtigungen während der Vorführung ausschalten";

private:
    LongWords m_translator;
};
INSTANTIATE_TEST_SUITE_P(Of, FontSizeTest,
                         testing::Combine(testing::Values(10, 14, 20),
                                          testing::Values("en", "ar", "de", "es", "fr", "ja", "long")));

TEST_P(FontSizeTest, TextsFitIntoThePopover) {
    publishNewVersion();
    const auto widget = popover();
    widget->show();
    keep(*widget, "popover");
    for (auto* child : widget->findChildren<QAbstractButton*>()) {
        auto* button = dynamic_cast<ToogleButton*>(child);
        SCOPED_TRACE(button->text().toStdString());
        EXPECT_TRUE(widget->rect().contains(QRect(button->mapTo(widget.get(), QPoint()), button->size())));
        EXPECT_GE(button->height(), button->fontMetrics().height());
        const bool isHeader = dynamic_cast<CustomToogleButton*>(button);
        const bool isBanner = dynamic_cast<InAppAlertButton*>(button);
        const double left = isBanner ? 20 : 6, room = isHeader ? 200 : isBanner ? 300 : 270;
        for (const auto& content : {button->text(), QString(longText)}) {
            button->setText(content);
            const auto shown = read(*button);
            const auto background = shown.at(left + room + 1, 2);
            const auto text = shown.bounds([&](QColor color) { return color != background; },
                                           QRectF(0, 0, isHeader ? 240 : 285, button->height()));
            EXPECT_LT(text.left(), left + 6);
            EXPECT_LE(text.right(), left + room + 1);
            EXPECT_TRUE(content != longText || text.right() > left + 0.6 * room) << "no smaller than need be";
            EXPECT_GT(text.top(), 0);
            EXPECT_LT(text.bottom(), button->height());
        }
        const auto atEnd = read(*button).ink(QRectF(288, 0, 18, button->height()));
        EXPECT_TRUE(!button->isChecked() || atEnd.width() > 10) << "the check mark";
    }
}

TEST_P(FontSizeTest, TextsFitIntoThePreferences) {
    auto& window = preferences();
    settle();
    EXPECT_GE(window.width(), 400);
    if (language == "en" || language == "long") {
        const bool mustGrow = points > 10 || language == "long";
        EXPECT_EQ(window.size() != QSize(400, 360), mustGrow);
    }
    keep(window, "preferences");
    QRegion taken;
    for (auto* child : window.findChildren<QWidget*>()) {
        const auto* label = qobject_cast<QLabel*>(child);
        const auto* button = qobject_cast<QAbstractButton*>(child);
        const auto text = label ? label->text() : button ? button->text() : QString();
        if (text.isEmpty() || dynamic_cast<Recorder*>(child))
            continue;
        SCOPED_TRACE(text.toStdString());
        const auto needed = child->fontMetrics().boundingRect(
            QRect(0, 0, child->width(), 1000), label && label->wordWrap() ? Qt::TextWordWrap : 0, text);
        EXPECT_LE(needed.width(), child->width());
        EXPECT_LE(needed.height(), child->height());
        const auto place = read({child->mapTo(&window, QPoint()), child->size()}, window.width());
        EXPECT_TRUE(window.rect().contains(place));
        EXPECT_FALSE(taken.intersects(place));
        taken += place;
        EXPECT_TRUE(!dynamic_cast<RowLabel*>(child) || place.left() == 30);
    }
    for (const auto* field : window.findChildren<QLineEdit*>()) {
        EXPECT_GT(field->width(), field->fontMetrics().horizontalAdvance(field->placeholderText()) + 8);
        EXPECT_GE(field->width(), 130);
    }
}

TEST_P(FontSizeTest, TextsFitIntoTheIndicator) {
    for (const auto* content : {longText, "Mic Muted", "Mic Unmuted"}) {
        SCOPED_TRACE(content);
        const Drawing shown({200, 200}, 1, Qt::transparent, [&](QImage& image) {
            QPainter painter(&image);
            painter.setFont(QApplication::font());
            paintAlert({std::nullopt, content}, painter, {0, 0, 200, 200});
        });
        const auto text = shown.bounds([](QColor color) { return color.green() > 100; });
        EXPECT_GE(text.left(), 10);
        EXPECT_LE(text.right(), 190);
        EXPECT_TRUE(content != longText || text.width() > 150);
        EXPECT_LT(text.bottom(), 190);
    }
}

} // namespace
} // namespace tavro
