#include "ui/ViewPainting.h"

#include "audio/AlertView.h"
#include "desktop/CoverWindow.h"
#include "platform/View.h"
#include "ui/AlertPainting.h"
#include "ui/CoverPainting.h"

namespace tavro {

void paintView(const View& view, QPainter& painter, const QRectF& area) {
    if (const auto* cover = dynamic_cast<const HostingView<CoverWindow>*>(&view))
        paintCover(cover->record.body(), painter, area);
    else if (const auto* alert = dynamic_cast<const HostingView<AlertView>*>(&view))
        paintAlert(alert->record.body(), painter, area);
}

} // namespace tavro
