#pragma once

#include "platform/simulated/windows/SimulatedScreens.h"
#include "platform/simulated/windows/SimulatedWindowServer.h"
#include "platform/windows/WindowList.h"

namespace tavro {

/// The window list and pictures, computed from the windows that stand at the server.
class SimulatedWindowList final : public WindowList {
public:
    SimulatedWindowList(const SimulatedScreens& screens, const SimulatedWindowServer& server);

    std::optional<PropertyList::Array> copyWindowInfo(unsigned options,
                                                      WindowNumber relativeTo) const override;
    /// One pixel for each point.
    std::optional<Image> createImage(Rect area, unsigned options, WindowNumber window,
                                     unsigned imageOptions) const override;

    /// Faults: the next list, the next picture is none.
    void failNextList() { m_failNextList = true; }
    void failNextImage() { m_failNextImage = true; }
    /// A fault: this stands in front of every list from now on.
    void addJunk(PropertyList entry) { m_junk.push_back(std::move(entry)); }

    /// How often somebody asked for a list.
    int listCount() const { return m_listCount; }

private:
    const SimulatedScreens& m_screens;
    const SimulatedWindowServer& m_server;
    PropertyList::Array m_junk;
    mutable bool m_failNextList = false;
    mutable bool m_failNextImage = false;
    mutable int m_listCount = 0;
};

} // namespace tavro
