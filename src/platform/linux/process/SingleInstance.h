#pragma once

#include "platform/linux/x11/XConnection.h"

#include <QObject>
#include <QVariant>

#include <functional>

namespace tavro {

/// One program for each display, whichever buses it is reached by: the first owns a selection of the X
/// server, whose window names the connection to the bus on which those that come later can activate it. Who
/// owns the program's name on the bus says nothing: one bus may have several displays.
class SingleInstance final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Claim {
        first,
        /// Another process has the display; it has been activated.
        activatedOther,
        /// Another process has the display, and did not answer in time or cannot be asked.
        otherIsSilent,
    };

    explicit SingleInstance(const XConnection& x)
        : m_x(x) {}
    /// Once, before anything else of the product starts.
    Claim claim();
    /// What to do when the program is started again.
    void onActivate(std::function<void()> block) { m_activate = std::move(block); }

public Q_SLOTS:
    void
    Activate(const QVariantMap& platformData); // NOLINT(readability-identifier-naming): the protocol's name

private:
    xcb_window_t takeDisplay() const;
    Claim activate(xcb_window_t owner) const;

    const XConnection& m_x;
    std::function<void()> m_activate;
};

} // namespace tavro
