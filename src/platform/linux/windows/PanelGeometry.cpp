#include "platform/linux/windows/PanelGeometry.h"

#include <algorithm>

namespace tavro {

namespace {

/// None where there is no panel, or no screen.
QRect panelAt(const std::vector<ScreenWithPanels>& screens, QPoint point) {
    for (const auto& screen : screens)
        for (const auto& panel : screen.panels)
            if (screen.area.contains(point) && panel.contains(point))
                return panel;
    return {};
}

bool isHorizontal(const QRect& panel) {
    return panel.width() >= panel.height();
}

} // namespace

QRect partOfScreen(const QRect& rootPixels, const QRect& screen, double scale) {
    const auto pixels = rootPixels.translated(-screen.topLeft());
    const QRect place(screen.topLeft() + (QPointF(pixels.topLeft()) / scale).toPoint(),
                      (QSizeF(pixels.size()) / scale).toSize());
    return place.intersected(screen);
}

std::vector<QRect> stripsAround(const QRect& workArea, const QRect& screen) {
    std::vector<QRect> strips{
        {screen.topLeft(), QPoint(screen.right(), workArea.top() - 1)},
        {QPoint(screen.left(), workArea.bottom() + 1), screen.bottomRight()},
        {screen.topLeft(), QPoint(workArea.left() - 1, screen.bottom())},
        {QPoint(workArea.right() + 1, screen.top()), screen.bottomRight()},
    };
    std::erase_if(strips, [](const auto& strip) { return strip.isEmpty(); });
    return strips;
}

QRect areaBeside(const QRect& panel, const QRect& screen) {
    auto area = screen;
    if (isHorizontal(panel) && panel.center().y() < screen.center().y())
        area.setTop(panel.bottom() + 1);
    else if (isHorizontal(panel))
        area.setBottom(panel.top() - 1);
    else if (panel.center().x() < screen.center().x())
        area.setLeft(panel.right() + 1);
    else
        area.setRight(panel.left() - 1);
    return area;
}

QRect besidePanel(const std::vector<ScreenWithPanels>& screens, QPoint point, QSize size) {
    const auto screen =
        std::ranges::find_if(screens, [&](const auto& each) { return each.area.contains(point); });
    if (screen == screens.end())
        return {point, size};
    const auto panel = panelAt(screens, point);
    const auto area = panel.isEmpty() ? screen->area : areaBeside(panel, screen->area);
    const auto fitting = size.boundedTo(area.size());
    const auto corner = panel.isEmpty() ? point : point - QPoint(fitting.width() / 2, fitting.height() / 2);
    return {QPoint(std::clamp(corner.x(), area.left(), area.right() + 1 - fitting.width()),
                   std::clamp(corner.y(), area.top(), area.bottom() + 1 - fitting.height())),
            fitting};
}

QPoint trayPlace(const std::vector<ScreenWithPanels>& screens, QPoint pointer) {
    if (!panelAt(screens, pointer).isEmpty())
        return pointer;
    constexpr int fromEnd = 14; // the middle of an item
    for (const auto& screen : screens) {
        if (screen.panels.empty())
            continue;
        const auto& panel = screen.panels.front();
        return isHorizontal(panel) ? QPoint(panel.right() - fromEnd, panel.center().y())
                                   : QPoint(panel.center().x(), panel.bottom() - fromEnd);
    }
    return screens.empty() ? QPoint() : screens.front().area.topRight();
}

} // namespace tavro
