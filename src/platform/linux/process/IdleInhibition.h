#pragma once

#include "platform/process/DisplaySleep.h"

#include <QObject>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <utility>

namespace tavro {

/// Keeps the desktop's screen saver away (org.freedesktop.ScreenSaver, else the session manager of GNOME and
/// its kin), and the X server's own, which also turns screens off (MIT-SCREEN-SAVER). Each ends with our
/// connection to it. Nobody is waited for.
class IdleInhibition final : public QObject, public DisplaySleep {
public:
    /// The block suspends the X server's screen saver, or lets it run again.
    explicit IdleInhibition(std::function<void(bool)> suspendServer)
        : m_suspendServer(std::move(suspendServer)) {}

    void prevent() override;
    void allow() override;

private:
    void ask(std::size_t service);
    void answered(std::size_t service, std::uint32_t cookie);
    void release();

    struct Held {
        std::size_t service;
        std::uint32_t cookie;
    };

    const std::function<void(bool)> m_suspendServer;
    bool m_isWanted = false;
    bool m_isAsking = false;
    std::optional<Held> m_held;
};

} // namespace tavro
