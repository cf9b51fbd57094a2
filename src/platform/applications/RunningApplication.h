#pragma once

namespace tavro {

namespace ApplicationActivationOption {
inline constexpr unsigned ignoringOtherApps = 2;
}

/// An application that was running when it was asked for. Requests to one that has gone are ignored.
class RunningApplication {
public:
    virtual ~RunningApplication() = default;
    /// Takes the application's windows off the screen until it is unhidden. Windows that its user had put
    /// away before stay as they are, then and later.
    virtual void hide() = 0;
    /// Brings back what `hide` took away, also when a process that has died since had called it. The windows
    /// of several applications come back together, in their former stacking order.
    virtual void unhide() = 0;
    /// Brings its windows to the front and gives one of them the keys; the options are a union of
    /// `ApplicationActivationOption`. The window server may do it later.
    virtual void activate(unsigned options) = 0;
    /// Whether both are the same application, also when they were asked for at different times.
    virtual bool isEqual(const RunningApplication& other) const = 0;
};

} // namespace tavro
