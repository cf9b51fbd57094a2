#include "platform/linux/desktops/KnownShortcuts.h"

namespace tavro {

void KnownShortcuts::ask() {
    if (std::exchange(m_isAsking, true))
        return;
    m_background.run(m_question, [this](std::vector<DesktopShortcut> shortcuts) {
        m_isAsking = false;
        if (!shortcuts.empty()) // else it has not answered
            m_known = std::move(shortcuts);
    });
}

} // namespace tavro
