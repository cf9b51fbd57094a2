#include "toolkit/Icons.h"

#include <QFile>
#include <QPainter>

namespace tavro {

namespace {

QString resourceOf(const NamedImage& image) {
    return QString::fromStdString(":/icons/" + image.name + ".svg");
}

} // namespace

bool hasIcon(const NamedImage& image) {
    return QFile::exists(resourceOf(image));
}

QIcon toolkitIcon(const NamedImage& image) {
    return QIcon(resourceOf(image));
}

QPixmap tinted(const NamedImage& image, QSize size, const QColor& color, double devicePixelRatio) {
    auto pixmap = toolkitIcon(image).pixmap(size, devicePixelRatio);
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRect(QPoint(0, 0), size), color);
    return pixmap;
}

} // namespace tavro
