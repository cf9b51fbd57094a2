#include "platform/linux/applications/XRunningApplication.h"

namespace tavro {

XRunningApplication::XRunningApplication(std::string name, xcb_window_t front,
                                         std::shared_ptr<XHiddenWindows> hidden)
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
    const auto* uppermost = m_hidden->clients()->uppermost(m_name);
    if (m_front != XCB_NONE)
        m_hidden->bringToFront(m_front);
    else if (uppermost)
        m_hidden->bringToFront(uppermost->id);
}

bool XRunningApplication::isEqual(const RunningApplication& other) const {
    const auto* application = dynamic_cast<const XRunningApplication*>(&other);
    return application && application->m_name == m_name;
}

} // namespace tavro
