#pragma once

#include "picture/BackgroundStyle.h"

#include <QRect>
#include <QSize>
#include <QStringList>

#include <optional>

namespace tavro {

/// Whether there can be a picture of that size.
bool isWithinBounds(QSize size);

/// What tavropro-picture makes of a picture for one screen.
struct Composition {
    BackgroundStyle style;
    QSize screen;
    /// What the picture is scaled to, as the screen's pixels count: the screen, or all that it spans.
    QRect area;

    /// As they stand on the program's command line.
    QStringList arguments() const;
    /// None where they are not whole, or there would be no picture of a screen within the bounds.
    static std::optional<Composition> parse(const QStringList& arguments);

    /// The size at which a picture is loaded, before it is made larger or smaller.
    QSize loadedSize(QSize own, bool isDrawing) const;
    /// Where a picture of that size is drawn; of tiles, the first one. Not for Qt Quick.
    QRect placeOf(QSize picture) const;
};

} // namespace tavro
