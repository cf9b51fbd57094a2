#pragma once

#include "platform/process/SystemVersion.h"
#include "platform/simulated/applications/ApplicationID.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/windows/SimulatedScreens.h"
#include "platform/windows/WindowServer.h"

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

/// All windows of the session in one stack, sorted by level. The server itself puts a wallpaper window and,
/// above it, a window with the desktop's icons on each screen.
class SimulatedWindowServer final : public WindowServer {
public:
    static constexpr int wallpaperLevel = -2147483623;
    static constexpr int desktopIconLevel = -2147483603;

    SimulatedWindowServer(SystemVersion version, Journal& journal, SimulatedScreens& screens);

    // In the journal both are "createWindow".
    std::shared_ptr<OverlayWindow> createOverlayWindow(const WindowSettings& settings) override;
    std::shared_ptr<TitledWindow> createTitledWindow(const WindowSettings& settings) override;
    std::shared_ptr<Popover> createPopover() override;
    int levelForKey(WindowLevelKey key) const override;

    /// A fault: the next window is refused.
    void failNextWindow() { m_failNextWindow = true; }

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
    template <class SimulatedKind>
    std::shared_ptr<SimulatedKind> createWindow(const WindowSettings& settings);
    void insert(ServerWindow window);
    std::optional<ServerWindow> extract(WindowNumber number);
    void rebuildDesktop();

    const SystemVersion m_version;
    Journal& m_journal;
    SimulatedScreens& m_screens;
    Observation m_screensChange;
    std::vector<ServerWindow> m_windows;
    std::set<ApplicationID> m_hiddenOwners;
    std::uint32_t m_lastNumber = 0;
    bool m_failNextWindow = false;
};

} // namespace tavro
