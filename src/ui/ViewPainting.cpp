#include "ui/ViewPainting.h"

#include "audio/AlertView.h"
#include "desktop/CoverWindow.h"
#include "platform/windows/View.h"
#include "preferences/PreferenceView.h"
#include "ui/painting/AlertPainting.h"
#include "ui/painting/CoverPainting.h"
#include "ui/popover/ContentWidget.h"
#include "ui/preferences/PreferenceWidget.h"
#include "ui/preferences/ToolbarWidget.h"

namespace tavro {

void paintView(const View& view, QPainter& painter, const QRectF& area) {
    if (const auto* cover = dynamic_cast<const HostingView<CoverWindow>*>(&view))
        paintCover(cover->record.body(), painter, area);
    else if (const auto* alert = dynamic_cast<const HostingView<AlertView>*>(&view))
        paintAlert(alert->record.body(), painter, area);
}

std::unique_ptr<QWidget> makeWidget(const View& view) {
    if (const auto* content = dynamic_cast<const HostingView<ContentView>*>(&view))
        return std::make_unique<ContentWidget>(content->record);
    if (dynamic_cast<const HostingView<PreferenceView>*>(&view))
        return std::make_unique<PreferenceWidget>(); // its only page
    if (const auto* toolbar = dynamic_cast<const HostingView<Toolbar>*>(&view))
        return std::make_unique<ToolbarWidget>(toolbar->record);
    return nullptr;
}

} // namespace tavro
