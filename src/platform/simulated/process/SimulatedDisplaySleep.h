#pragma once

#include "platform/process/DisplaySleep.h"

namespace tavro {

class SimulatedDisplaySleep final : public DisplaySleep {
public:
    void prevent() override { isPrevented = true; }
    void allow() override { isPrevented = false; }

    bool isPrevented = false;
};

} // namespace tavro
