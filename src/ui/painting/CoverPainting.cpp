#include "ui/painting/CoverPainting.h"

#include "toolkit/Pixels.h"
#include "toolkit/Translation.h"

#include <QPainter>

namespace tavro {

namespace {

struct ContentPainter {
    QPainter& painter;
    const QRectF& area;

    void operator()(const StretchedImage& content) const {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(area, toolkitImage(content.image));
    }

    void operator()(const FixedImage& content) const {
        QRectF place(0, 0, content.image.size.width, content.image.size.height);
        place.moveCenter(area.center());
        painter.drawImage(place, toolkitImage(content.image));
    }

    void operator()(const CenteredText& content) const {
        painter.drawText(area, Qt::AlignCenter, translated(content.text));
    }
};

} // namespace

void paintCover(const CoverContent& content, QPainter& painter, const QRectF& area) {
    std::visit(ContentPainter{painter, area}, content);
}

} // namespace tavro
