#include "platform/linux/windows/Covers.h"

#include <algorithm>

namespace tavro {

namespace {
/// Two programs that each insist on being the upper one must not fight for ever.
constexpr int mostRaises = 100;
} // namespace

void Covers::add(xcb_window_t window, bool passesClicks) {
    m_covers[window] = {passesClicks, XCB_NONE, mostRaises};
}

// The window manager's frame takes the clicks that its window lets through, so it is emptied as well, now and
// whenever the window manager shapes it anew.
void Covers::framed(xcb_window_t window, xcb_window_t frame) {
    const auto cover = m_covers.find(window);
    if (cover == m_covers.end() || !cover->second.passesClicks)
        return;
    cover->second.frame = frame;
    m_commands.push_back({What::watchFrame, frame});
    m_commands.push_back({What::passClicks, frame});
}

void Covers::takesClicks(xcb_window_t frame) {
    const auto isFrame = [frame](const auto& cover) { return cover.second.frame == frame; };
    if (std::ranges::any_of(m_covers, isFrame))
        m_commands.push_back({What::passClicks, frame});
}

void Covers::restacked(const std::vector<StackedWindow>& stacking) {
    const auto highestForeign = std::find_if(stacking.rbegin(), stacking.rend(), [this](const auto& window) {
        return window.isDesktop && !contains(window.id);
    });
    for (auto window = highestForeign; window != stacking.rend(); ++window) {
        const auto cover = m_covers.find(window->id);
        if (cover != m_covers.end() && cover->second.raisesLeft-- > 0)
            m_commands.push_back({What::raise, window->id});
    }
}

} // namespace tavro
