#include "platform/linux/windows/CoverPanes.h"

namespace tavro {

std::vector<CoverPane> panesOf(const QRect& cover, const std::vector<DesktopWindow>& desktopWindows,
                               const DesktopWindow& root) {
    std::vector<CoverPane> panes;
    for (const auto& [id, depth, place] : desktopWindows)
        if (const auto common = place & cover; !common.isEmpty())
            panes.push_back(
                {id, depth, common.translated(-place.topLeft()), common.topLeft() - cover.topLeft()});
    if (panes.empty())
        panes.push_back({root.id, root.depth, cover, {}});
    return panes;
}

} // namespace tavro
