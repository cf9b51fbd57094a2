#include "platform/linux/windows/CoverPanes.h"

#include <QRegion>

namespace tavro {

std::vector<CoverPane> panesOf(const QRect& cover, const std::vector<DesktopWindow>& desktopWindows,
                               const DesktopWindow& root) {
    std::vector<CoverPane> panes;
    QRegion bare(cover);
    for (const auto& [id, depth, place] : desktopWindows) {
        const auto common = place & cover;
        if (common.isEmpty())
            continue;
        panes.push_back({id, depth, common.translated(-place.topLeft()), common.topLeft() - cover.topLeft()});
        bare -= common;
    }
    if (!bare.isEmpty())
        panes.push_back({root.id, root.depth, cover, {}});
    return panes;
}

} // namespace tavro
