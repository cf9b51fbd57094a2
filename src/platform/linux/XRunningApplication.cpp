#include "platform/linux/XRunningApplication.h"

namespace tavro {

XRunningApplication::XRunningApplication(std::string name, xcb_window_t front,
                                         std::shared_ptr<const ClientList> clients,
                                         std::shared_ptr<HiddenWindows> hidden)
    : m_name(std::move(name))
    , m_front(front)
    , m_clients(std::move(clients))
    , m_hidden(std::move(hidden)) {}

void XRunningApplication::hide() {
    m_hidden->hide(m_name, *m_clients);
}

void XRunningApplication::unhide() {
    m_hidden->unhide(m_name);
}

void XRunningApplication::activate(unsigned) {
    auto window = m_front;
    for (const auto& client : m_clients->windows) // the uppermost one, where none was in front
        if (m_front == XCB_NONE && client.application == m_name && client.isApplicationWindow &&
            !client.isMinimised && m_clients->isOnCurrentWorkspace(client))
            window = client.id;
    if (window != XCB_NONE)
        m_hidden->bringToFront(window);
}

bool XRunningApplication::isEqual(const RunningApplication& other) const {
    const auto* application = dynamic_cast<const XRunningApplication*>(&other);
    return application && application->m_name == m_name;
}

} // namespace tavro
