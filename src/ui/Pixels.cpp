#include "ui/Pixels.h"

#include <QPainter>

namespace tavro {

QImage toolkitImage(const Image& image) {
    using Pixels = std::shared_ptr<const std::uint8_t>;
    return QImage(
        image.pixels.get(), image.pixelWidth, image.pixelHeight, static_cast<qsizetype>(image.bytesPerRow),
        QImage::Format_ARGB32_Premultiplied, [](void* keeper) { delete static_cast<Pixels*>(keeper); },
        new Pixels(image.pixels));
}

QIcon toolkitIcon(const NamedImage& image) {
    return QIcon(QString::fromStdString(":/icons/" + image.name + ".svg"));
}

QColor toolkitColor(const Color& color) {
    const auto part = [](double value) { return static_cast<float>(value); };
    return QColor::fromRgbF(part(color.red), part(color.green), part(color.blue), part(color.alpha));
}

QPixmap tinted(const NamedImage& image, QSize size, const QColor& color, double devicePixelRatio) {
    auto pixmap = toolkitIcon(image).pixmap(size, devicePixelRatio);
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRect(QPoint(0, 0), size), color);
    return pixmap;
}

} // namespace tavro
