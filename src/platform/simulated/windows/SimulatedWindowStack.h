#pragma once

#include "platform/simulated/applications/ApplicationID.h"
#include "platform/windows/Geometry.h"
#include "platform/windows/Identifiers.h"

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tavro {

/// A window as the server knows it, whoever owns it.
struct ServerWindow {
    ApplicationID owner = ApplicationID::system;
    std::string ownerName;
    std::string name;
    Rect frame;
    int level = 0;
    bool isOrdered = true;
    bool isMinimised = false;
    bool canHide = true;
    bool ignoresMouseEvents = false;
    /// What it shows: one colour, 0xAARRGGBB.
    std::uint32_t color = 0xffffffff;
    WindowNumber number{};
};

/// All windows of the session in one stack, sorted by level.
class SimulatedWindowStack {
public:
    /// Puts a window of another program on top of its level.
    WindowNumber add(ServerWindow window);
    void remove(WindowNumber number);
    void removeWindowsOf(ApplicationID owner);
    void orderFront(WindowNumber number);
    void setLevel(WindowNumber number, int level);
    void setHidden(ApplicationID owner, bool isHidden);

    /// Null for a window that is not there.
    ServerWindow* find(WindowNumber number);
    const ServerWindow* find(WindowNumber number) const;
    bool isVisible(const ServerWindow& window) const;
    /// Every window, visible or not, bottom to top.
    const std::vector<ServerWindow>& windows() const { return m_windows; }
    /// The window that a click at this place reaches.
    const ServerWindow* windowAt(Point point) const;

private:
    void insert(ServerWindow window);
    std::optional<ServerWindow> extract(WindowNumber number);

    std::vector<ServerWindow> m_windows;
    std::set<ApplicationID> m_hiddenOwners;
    std::uint32_t m_lastNumber = 0;
};

} // namespace tavro
