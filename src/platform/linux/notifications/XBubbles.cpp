#include "platform/linux/notifications/XBubbles.h"

#include "platform/linux/x11/Concealment.h"

#include <algorithm>

namespace tavro {

// The type is set before the window shows, so that nothing of it is ever seen.
XBubbles::XBubbles(XConnection& x)
    : m_x(x)
    , m_events{
          x.on(XEvents::createNotify,
               [this](const auto& event) {
                   if (!m_areAway || event.parent != m_x.root())
                       return;
                   const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
                   xcb_change_window_attributes(m_x.raw(), event.window, XCB_CW_EVENT_MASK, &mask);
                   m_new.insert(event.window);
                   if (isBubble(event.window)) // it may have been set before we asked
                       conceal(m_x, event.window, event.window);
                   m_x.flush();
               }),
          x.on(XEvents::propertyNotify,
               [this](const auto& event) {
                   if (event.atom != m_x.atoms().netWmWindowType || !m_new.contains(event.window) ||
                       !isBubble(event.window))
                       return;
                   conceal(m_x, event.window, event.window);
                   m_x.flush();
               }),
          x.on(XEvents::destroyNotify, [this](const auto& event) { m_new.erase(event.window); }),
      } {}

void XBubbles::keepAway(bool areAway) {
    m_areAway = areAway;
    m_x.watchTopLevels(areAway);
    for (const auto bubble : bubbles())
        if (areAway)
            conceal(m_x, bubble, bubble);
        else
            reveal(m_x, bubble, bubble);
    if (!areAway)
        m_new.clear();
    m_x.flush();
}

bool XBubbles::isBubble(xcb_window_t window) const {
    const auto types = m_x.values(m_x.request(window, m_x.atoms().netWmWindowType));
    return std::ranges::count(types, m_x.atoms().netWmWindowTypeNotification) > 0;
}

// Not from the window manager's list: bubbles are windows that it does not manage (override-redirect).
std::vector<xcb_window_t> XBubbles::bubbles() const {
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_x.raw(), xcb_query_tree(m_x.raw(), m_x.root()), nullptr));
    if (!tree)
        return {};
    const auto* first = xcb_query_tree_children(tree.get());
    std::vector<xcb_window_t> windows(first, first + tree->children_len);
    std::erase_if(windows, [this](auto window) { return !isBubble(window); });
    return windows;
}

} // namespace tavro
