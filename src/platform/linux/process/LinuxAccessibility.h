#pragma once

#include "platform/process/Accessibility.h"

namespace tavro {

/// X11 asks nobody before one program controls another.
class LinuxAccessibility final : public Accessibility {
public:
    bool isProcessTrusted(bool) override { return true; }
};

} // namespace tavro
