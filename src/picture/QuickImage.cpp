#include "picture/QuickImage.h"

#include <QRectF>
#include <QtMath>

#include <algorithm>

namespace tavro {

namespace {

using Scaling = BackgroundStyle::Scaling;

/// Also of what is fitted Qt Quick loads as much as would leave nothing free.
bool isLoadedToFill(Scaling scaling) {
    return scaling == Scaling::fitted || scaling == Scaling::zoomed;
}

/// What is left free before the picture.
int offset(double element, double picture) {
    return static_cast<int>((element - picture) / 2);
}

/// What is cut off there.
int cutOff(double picture, double element) {
    return qCeil((picture - element) / 2);
}

/// The part of a side that is seen when the other one fits, in whole pixels.
int seen(double side, double otherScale, double scale) {
    return static_cast<int>(otherScale / scale * side);
}

/// The part of a picture that fills the element.
QRectF filling(QSizeF picture, QSizeF element) {
    const auto scaleX = element.width() / picture.width(), scaleY = element.height() / picture.height();
    if (scaleX > scaleY) {
        const auto height = seen(picture.height(), scaleY, scaleX);
        return {0.0, double(cutOff(picture.height(), height)), picture.width(), double(height)};
    }
    const auto width = seen(picture.width(), scaleX, scaleY);
    return {double(cutOff(picture.width(), width)), 0.0, double(width), picture.height()};
}

} // namespace

QSize quickLoadedSize(Scaling scaling, QSize picture, QSize element, bool isDrawing) {
    const auto scaleX = double(element.width()) / picture.width(),
               scaleY = double(element.height()) / picture.height();
    if (isDrawing && !isLoadedToFill(scaling))
        return element;
    const auto scale = isLoadedToFill(scaling) ? std::max(scaleX, scaleY) : std::min(scaleX, scaleY);
    if (scale >= 1 && !isLoadedToFill(scaling))
        return picture;
    return {qRound(picture.width() * scale), qRound(picture.height() * scale)};
}

void drawQuickImage(QPainter& painter, Scaling scaling, const QImage& picture, QSize element) {
    const QRectF all({}, picture.size()), area({}, element);
    const QPoint corner(offset(element.width(), picture.width()), offset(element.height(), picture.height()));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    switch (scaling) {
    case Scaling::centered:
        painter.drawImage(corner, picture);
        break;
    case Scaling::tiled:
        painter.setBrushOrigin(corner);
        painter.fillRect(area, picture);
        break;
    case Scaling::stretched:
        painter.drawImage(area, picture, all);
        break;
    case Scaling::fitted: {
        const auto size = all.size().scaled(element, Qt::KeepAspectRatio);
        painter.drawImage(
            QRectF(QPointF(offset(element.width(), size.width()), offset(element.height(), size.height())),
                   size),
            picture, all);
        break;
    }
    case Scaling::zoomed:
        painter.drawImage(area, picture, filling(all.size(), element));
        break;
    }
}

} // namespace tavro
