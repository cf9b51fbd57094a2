#pragma once

#include "platform/windows/Color.h"

#include <QColor>

namespace tavro {

QColor toolkitColor(const Color& color);

/// How well one is seen on the other, 1 to 21 (WCAG 2). Both without transparency.
double contrast(const QColor& one, const QColor& other);
/// White or black, whichever is seen better.
QColor legibleOn(const QColor& background);

} // namespace tavro
