#include "platform/linux/applications/XRunningApplication.h"

namespace tavro {

XRunningApplication::XRunningApplication(std::string name, xcb_window_t front,
                                         std::shared_ptr<HiddenWindows> hidden)
    : m_name(std::move(name))
    , m_front(front)
    , m_hidden(std::move(hidden)) {}

void XRunningApplication::hide() {
    m_hidden->hide(m_name);
}

void XRunningApplication::unhide() {
    m_hidden->unhide(m_name);
}

void XRunningApplication::activate(unsigned) {
    const auto window = m_front != XCB_NONE ? m_front : uppermostWindow();
    if (window != XCB_NONE)
        m_hidden->bringToFront(window);
}

xcb_window_t XRunningApplication::uppermostWindow() const {
    const auto clients = m_hidden->clients();
    auto uppermost = xcb_window_t{XCB_NONE};
    for (const auto& window : clients->windows)
        if (window.application == m_name && window.isApplicationWindow && !window.isMinimised &&
            clients->isOnCurrentWorkspace(window))
            uppermost = window.id;
    return uppermost;
}

bool XRunningApplication::isEqual(const RunningApplication& other) const {
    const auto* application = dynamic_cast<const XRunningApplication*>(&other);
    return application && application->m_name == m_name;
}

} // namespace tavro
