#pragma once

#include "audio/AlertContent.h"

class QPainter;
class QRectF;

namespace tavro {

/// Draws the microphone's indicator over the whole area.
void paintAlert(const AlertContent& content, QPainter& painter, const QRectF& area);

} // namespace tavro
