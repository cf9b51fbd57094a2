#pragma once

#include "platform/process/ObserverList.h"
#include "platform/windows/Screens.h"

#include <cstddef>

namespace tavro {

/// The screens that tests plug in and out.
class SimulatedScreens final : public Screens {
public:
    std::vector<Screen> screens() const override { return m_screens; }
    std::optional<Screen> mainScreen() const override;
    std::optional<DisplayID> mainDisplayID() const override;
    Rect displayBounds(DisplayID display) const override;

    /// The first one carries the menu bar, and the keyboard focus until `setMain`.
    void set(std::vector<Screen> screens);
    /// The keyboard focus moves to a window on this screen.
    void setMain(std::size_t index) { m_main = index; }
    [[nodiscard]] Observation didChange(std::function<void()> observer);

    /// A screen that describes itself by this number, which may be of any type.
    static Screen screen(Rect frame, PropertyList number);
    /// A screen that reports no number.
    static Screen screen(Rect frame) { return {frame, {}}; }

    /// From global screen coordinates to display coordinates, and back.
    Rect flipped(Rect rect) const;

private:
    std::vector<Screen> m_screens;
    std::size_t m_main = 0;
    ObserverList<> m_observers;
};

} // namespace tavro
