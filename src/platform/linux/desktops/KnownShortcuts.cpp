#include "platform/linux/desktops/KnownShortcuts.h"

namespace tavro {

void KnownShortcuts::ask() {
    if (std::exchange(m_isAsking, true))
        return;
    m_background.run(m_question, [this](std::vector<DesktopShortcut> told) {
        m_isAsking = false;
        if (!told.empty()) // else it has not answered
            m_lastTold = std::move(told);
    });
}

} // namespace tavro
