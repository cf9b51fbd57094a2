#include "ui/preferences/WallpaperPreview.h"

#include "preferences/PreferenceView.h"
#include "toolkit/Pixels.h"

#include <QPainter>

namespace tavro {

namespace {
constexpr QSize previewSize(static_cast<int>(PreferenceView::previewSize.width),
                            static_cast<int>(PreferenceView::previewSize.height));
} // namespace

WallpaperPreview::WallpaperPreview(QWidget* parent)
    : QLabel(parent) {
    setFixedSize(previewSize);
    setScaledContents(true);
}

// No larger than any screen shows it.
void WallpaperPreview::setImage(const Image* image) {
    constexpr int greatestPixelRatio = 3;
    QPixmap pixmap(previewSize * greatestPixelRatio);
    pixmap.fill(Qt::transparent);
    if (image) {
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(pixmap.rect(), toolkitImage(*image));
    }
    setPixmap(pixmap);
}

void WallpaperPreview::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    constexpr double half = 0.5;
    QPainter painter(this);
    painter.setPen(QPen(Qt::black, 2 * half));
    painter.drawRect(QRectF(rect()).adjusted(half, half, -half, -half));
}

} // namespace tavro
