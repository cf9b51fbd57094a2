#pragma once

#include "platform/windows/Color.h"

#include <QColor>

namespace tavro {

QColor toolkitColor(const Color& color);

} // namespace tavro
