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

#include <utility>
#include <variant>

namespace tavro {

namespace {

ViewContent contentOf(CoverContent&& content) {
    if (const auto* image = std::get_if<FixedImage>(&content); image && image->image.onServer)
        return {image->image.onServer, {}};
    return {{}, [content = std::move(content)](auto& painter, const auto& area) {
                paintCover(content, painter, area);
            }};
}

} // namespace

ViewContent contentOf(const View& view) {
    if (const auto* cover = dynamic_cast<const HostingView<CoverWindow>*>(&view))
        return contentOf(cover->record.body());
    if (const auto* alert = dynamic_cast<const HostingView<AlertView>*>(&view))
        return {{}, [content = alert->record.body()](auto& painter, const auto& area) {
                    paintAlert(content, painter, area);
                }};
    return {};
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
