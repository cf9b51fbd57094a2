#include "ui/ViewPainting.h"

#include "desktop/CoverWindow.h"
#include "platform/View.h"
#include "ui/CoverPainting.h"

namespace tavro {

void paintView(const View& view, QPainter& painter, const QRectF& area) {
    if (const auto* cover = dynamic_cast<const HostingView<CoverWindow>*>(&view))
        paintCover(cover->record.body(), painter, area);
}

} // namespace tavro
