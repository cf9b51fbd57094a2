#include "picture/CompositionPainting.h"

#include "picture/GdkPixbufScaler.h"
#include "picture/QuickImage.h"

#include <QLinearGradient>
#include <QPainter>

namespace tavro {

namespace {

using Scaling = BackgroundStyle::Scaling;
using Shading = BackgroundStyle::Shading;

/// The part of the picture that has been made that large.
QImage scaledPart(BackgroundStyle::Scaler scaler, const QImage& picture, QSize size, const QRect& part) {
    if (picture.size() == size)
        return picture.copy(part);
    if (scaler == BackgroundStyle::Scaler::gdkPixbuf)
        return scaledByGdkPixbuf(picture, size, part);
    return isWithinBounds(size)
               ? picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).copy(part)
               : QImage();
}

QBrush brushOf(const BackgroundStyle& style, const QRect& area) {
    const QColor first(QRgb{style.colors[0]}), second(QRgb{style.colors[1]});
    if (style.shading == Shading::solid)
        return first;
    QLinearGradient gradient(area.topLeft(), style.shading == Shading::horizontal
                                                 ? QPointF(area.x() + area.width(), area.y())
                                                 : QPointF(area.x(), area.y() + area.height()));
    const bool isTexture = style.scaler == BackgroundStyle::Scaler::texture; // of two pixels, a colour each
    gradient.setColorAt(isTexture ? 0.25 : 0, first);
    gradient.setColorAt(isTexture ? 0.75 : 1, second);
    return gradient;
}

} // namespace

QImage draw(const Composition& composition, const QImage& picture) {
    const auto& [style, screen, area] = composition;
    QImage image(screen, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return {};
    QPainter painter(&image);
    painter.fillRect(image.rect(), brushOf(style, area));
    if (picture.isNull())
        return image;
    if (style.scaler == BackgroundStyle::Scaler::quick) {
        const auto size = quickLoadedSize(style.scaling, picture.size(), screen, false);
        const auto loaded = scaledPart(style.scaler, picture, size, {{}, size});
        drawQuickImage(painter, style.scaling, loaded, screen);
        return loaded.isNull() ? QImage() : image;
    }
    const auto place = composition.placeOf(picture.size());
    if (style.scaling == Scaling::tiled) {
        painter.setBrushOrigin(place.topLeft());
        painter.fillRect(image.rect(), picture);
        return image;
    }
    if (style.scaler == BackgroundStyle::Scaler::texture) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(place, picture);
        return image;
    }
    const auto visible = place & image.rect();
    if (visible.isEmpty())
        return image;
    const auto part = scaledPart(style.scaler, picture, place.size(), visible.translated(-place.topLeft()));
    painter.drawImage(visible.topLeft(), part);
    return part.isNull() ? QImage() : image;
}

} // namespace tavro
