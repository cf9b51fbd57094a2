#pragma once

#include "platform/process/CurrentValueSubject.h"
#include "platform/process/ObserverList.h"

#include <functional>
#include <string>

namespace tavro {

/// Whether the application starts when the user logs in. Nothing is cached: each read asks the system.
/// Main thread only.
class LaunchAtLogin {
public:
    class Observable;
    class KVO;
    struct Toggle;

    static bool isEnabled();
    /// What the system refuses gives one line in the log; the observers are notified all the same.
    static void setIsEnabled(bool isEnabled);

    static Observable& observable();
    static KVO& kvo();
    /// Every value that is assigned here, after the one that was in force when it was first asked for.
    static Publisher<bool>& publisher();

    /// The application that logs in for this one before generation 13.
    static std::string helperBundleIdentifier();

    LaunchAtLogin() = delete;
};

/// For views.
class LaunchAtLogin::Observable {
public:
    bool isEnabled() const { return LaunchAtLogin::isEnabled(); }
    void setIsEnabled(bool isEnabled) { LaunchAtLogin::setIsEnabled(isEnabled); }
    [[nodiscard]] Observation willChange(std::function<void()> observer) {
        return objectWillChange.add(std::move(observer));
    }

private:
    friend LaunchAtLogin;
    ObserverList<> objectWillChange;
};

/// For observers of one value by its key.
class LaunchAtLogin::KVO {
public:
    bool isEnabled() const { return LaunchAtLogin::isEnabled(); }
    void setIsEnabled(bool isEnabled) { LaunchAtLogin::setIsEnabled(isEnabled); }
    /// Told before and after each assignment.
    [[nodiscard]] Observation willChangeIsEnabled(std::function<void()> observer) {
        return m_willChange.add(std::move(observer));
    }
    [[nodiscard]] Observation didChangeIsEnabled(std::function<void()> observer) {
        return m_didChange.add(std::move(observer));
    }

private:
    friend LaunchAtLogin;
    ObserverList<> m_willChange;
    ObserverList<> m_didChange;
};

/// A switch with a label; it shows and sets `launchAtLogin.isEnabled`.
struct LaunchAtLogin::Toggle {
    explicit Toggle(std::string title = "Launch at login")
        : launchAtLogin(observable())
        , label(std::move(title)) {}

    Observable& launchAtLogin;
    std::string label;
};

} // namespace tavro
