#pragma once

#include "platform/windows/Screens.h"
#include "toolkit/Coordinates.h"

#include <QByteArray>
#include <QRect>

#include <map>

class QScreen;

namespace tavro {

class XConnection;

/// The RandR monitors. A display's identifier is the atom of its connector's name: a number that no other
/// display gets while the server runs.
class QtScreens final : public Screens {
public:
    explicit QtScreens(XConnection& x)
        : m_x(x) {}

    std::vector<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;
    std::optional<DisplayID> mainDisplayID() const override;
    Rect displayBounds(DisplayID display) const override;

    /// To the pixel, also where a screen is no whole number of the toolkit's points.
    static Coordinates coordinates();
    /// The connector's name ("HDMI-1") of a screen, empty when it is not there.
    std::string connector(const Screen& screen) const;
    /// The pixels of the root window that an area in display coordinates covers; empty for one that does
    /// not begin on a screen.
    static QRect rootPixels(const Rect& area);
    /// The same for a window's frame, whose origin is at the lower left.
    static QRect framePixels(const Rect& frame);

private:
    const QScreen* activeScreen() const;
    Screen describe(const QScreen& screen) const;
    DisplayID identifier(const QScreen& screen) const;

    XConnection& m_x;
    mutable std::map<QByteArray, DisplayID> m_identifiers; // those that the server has told
};

} // namespace tavro
