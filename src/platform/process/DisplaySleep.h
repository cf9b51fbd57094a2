#pragma once

namespace tavro {

/// Whether the screens go dark by themselves when the user does nothing. Main thread only.
class DisplaySleep {
public:
    virtual ~DisplaySleep() = default;
    /// From now on they do not; ends by itself with the process. Returns at once.
    virtual void prevent() = 0;
    /// What was prevented may happen again.
    virtual void allow() = 0;
};

} // namespace tavro
