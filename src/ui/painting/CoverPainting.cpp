#include "ui/painting/CoverPainting.h"

#include "toolkit/Pixels.h"
#include "toolkit/Translation.h"

#include <QPainter>
#include <QPainterPath>

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

    // White with a black outline, for what lies below shows through.
    void operator()(const CenteredText& content) const {
        constexpr double outline = 3;
        const auto text = translated(content.text);
        QPainterPath letters;
        letters.addText(0, 0, painter.font(), text);
        letters.translate(area.center() - letters.boundingRect().center());
        painter.setRenderHint(QPainter::Antialiasing);
        painter.strokePath(letters, QPen(Qt::black, outline, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.fillPath(letters, Qt::white);
    }
};

} // namespace

void paintCover(const CoverContent& content, QPainter& painter, const QRectF& area) {
    std::visit(ContentPainter{painter, area}, content);
}

} // namespace tavro
