#pragma once

#include "Launch.h"
#include "ProcessEvents.h"
#include "support/Eventually.h"

#include "platform/linux/windows/QtTitledWindow.h"
#include "platform/simulated/storage/SimulatedImages.h"
#include "platform/simulated/windows/SimulatedPopover.h"
#include "platform/simulated/windows/SimulatedTitledWindow.h"
#include "popover/ContentView.h"
#include "settings/Constants.h"
#include "ui/ViewPainting.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QWidget>

#include <gmock/gmock.h>

#include <functional>

namespace tavro {

/// What was drawn, looked at in points.
class Drawing {
public:
    Drawing(QSize size, int pixelRatio, QColor background, const std::function<void(QImage&)>& draw)
        : m_background(background)
        , m_image(size * pixelRatio, QImage::Format_ARGB32_Premultiplied) {
        m_image.setDevicePixelRatio(pixelRatio);
        m_image.fill(background);
        draw(m_image);
    }
    /// A widget as it would show, in its own size.
    explicit Drawing(QWidget& widget, int pixelRatio = 1)
        : Drawing(widget.size(), pixelRatio, widget.palette().color(QPalette::Window),
                  [&widget](QImage& image) { widget.render(&image, {}, {}, QWidget::DrawChildren); }) {}

    QColor at(double x, double y) const {
        const auto ratio = m_image.devicePixelRatio();
        return m_image.pixelColor(static_cast<int>(x * ratio), static_cast<int>(y * ratio));
    }
    /// The smallest rectangle of points in the area around all pixels that the condition holds for.
    QRectF bounds(const std::function<bool(QColor)>& condition, QRectF area = {}) const {
        const auto ratio = m_image.devicePixelRatio();
        const QRect pixels = area.isNull()
                                 ? m_image.rect()
                                 : QRectF(area.topLeft() * ratio, area.size() * ratio).toAlignedRect();
        QRect found;
        for (int y = pixels.top(); y <= pixels.bottom(); ++y)
            for (int x = pixels.left(); x <= pixels.right(); ++x)
                if (condition(m_image.pixelColor(x, y)))
                    found |= QRect(x, y, 1, 1);
        return {QPointF(found.topLeft()) / ratio, QSizeF(found.size()) / ratio};
    }
    /// Around all that is drawn there.
    QRectF ink(QRectF area = {}) const {
        return bounds([this](QColor color) { return color != m_background; }, area);
    }

private:
    const QColor m_background;
    QImage m_image;
};

MATCHER_P2(IsColor, expected, tolerance, "") {
    const QColor color(expected);
    *result_listener << arg.name(QColor::HexArgb).toStdString();
    const auto isNear = [&](int one, int other) { return std::abs(one - other) <= tolerance; };
    return isNear(arg.red(), color.red()) && isNear(arg.green(), color.green()) &&
           isNear(arg.blue(), color.blue()) && isNear(arg.alpha(), color.alpha());
}

/// The views on the product that was launched on the simulated Mac, in windows of a display that is in
/// memory.
class UiTest : public SimulatedMacTest {
protected:
    UiTest() { mac.mainQueue().runUntilIdle(); }
    ~UiTest() override { QApplication::setFont(QFont()); }

    std::unique_ptr<QWidget> popover() {
        auto widget = makeWidget(*static_cast<SimulatedPopover&>(*launch.delegate.popover).contentView());
        widget->setFixedSize(static_cast<int>(Constants::popoverWidth),
                             static_cast<int>(Constants::popoverHeight));
        return widget;
    }
    /// The preferences' window as it comes on the Linux machine; gone with the test.
    QWidget& preferences() {
        const auto before = QApplication::topLevelWidgets();
        m_window = std::make_unique<QtTitledWindow>(PreferenceView::contentSize, m_views);
        launch.delegate.openPreferenceWindow();
        const auto& made = static_cast<SimulatedTitledWindow&>(*launch.delegate.preferenceView->window);
        m_window->setContentView(made.contentView());
        m_window->addTitlebarAccessory(made.titlebarAccessory());
        m_window->makeKeyAndOrderFront();
        for (auto* window : QApplication::topLevelWidgets())
            if (!before.contains(window) && window->isVisible())
                return *window;
        throw std::runtime_error("no window");
    }

    /// The user has chosen a picture, of one colour.
    void chooseWallpaper() {
        const auto file = mac.fileManager().existingDocumentsFolder().value() / "wallpaper.png";
        SimulatedImages::write(file, 2, 2, 0xFF3366CC);
        mac.userDefaults().setObject(Constants::wallpaperFileKey, true);
    }
    void publishNewVersion() {
        mac.urlSession()->answer(R"({"version":"99.0.0"})");
        mac.mainQueue().runUntilIdle();
    }

    template <class Widget>
    static Widget& find(const QObject& parent, int index = 0) {
        for (auto* child : parent.findChildren<QObject*>())
            if (auto* found = dynamic_cast<Widget*>(child); found && index-- == 0)
                return *found;
        throw std::runtime_error("no such widget");
    }
    static testing::AssertionResult comesTo(const std::string& what, const std::function<bool()>& condition) {
        return eventually(what, condition, &processEvents);
    }
    /// What was put off to the next turn.
    static void settle() { QCoreApplication::sendPostedEvents(); }

    Launch launch{mac};

private:
    const Views m_views{&contentOf, &makeWidget};
    std::unique_ptr<QtTitledWindow> m_window;
};

} // namespace tavro
