#pragma once

#include "platform/linux/desktops/DesktopShortcut.h"
#include "platform/linux/process/Background.h"

#include <functional>
#include <vector>

namespace tavro {

/// What a desktop has answered of the combinations that it uses itself. It is asked on a thread of its own:
/// its settings may take their time, and who records a combination holds the keyboard meanwhile. Main thread
/// only.
class KnownShortcuts {
public:
    /// Runs on that thread.
    using Question = std::function<std::vector<DesktopShortcut>()>;

    explicit KnownShortcuts(Question question)
        : m_question(std::move(question)) {}

    /// Returns at once. A question that is under way will do.
    void ask();
    const std::vector<DesktopShortcut>& known() const { return m_known; }

private:
    const Question m_question;
    std::vector<DesktopShortcut> m_known;
    bool m_isAsking = false;
    Background m_background;
};

} // namespace tavro
