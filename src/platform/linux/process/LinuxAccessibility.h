#pragma once

#include "platform/process/Accessibility.h"

#include <QObject>

#include <optional>

namespace tavro {

/// X11 asks nobody before one program controls another. The toolkit has no event for texts to be said (that
/// came with 6.8), so they are those of a notification that shows.
class LinuxAccessibility final : public Accessibility {
public:
    bool isProcessTrusted(bool) override { return true; }
    void announce(const std::string& text) override;

private:
    std::optional<QObject> m_announcer; // of the last one
};

} // namespace tavro
