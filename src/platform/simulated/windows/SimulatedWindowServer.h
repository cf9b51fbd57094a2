#pragma once

#include "platform/process/SystemVersion.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/windows/SimulatedScreens.h"
#include "platform/simulated/windows/SimulatedWindowStack.h"
#include "platform/windows/WindowServer.h"

namespace tavro {

/// Makes windows, in the stack of those of the session. The server itself puts a wallpaper window and, above
/// it, a window with the desktop's icons on each screen.
class SimulatedWindowServer final : public WindowServer, public SimulatedWindowStack {
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

private:
    template <class SimulatedKind>
    std::shared_ptr<SimulatedKind> createWindow(const WindowSettings& settings);
    void rebuildDesktop();

    const SystemVersion m_version;
    Journal& m_journal;
    SimulatedScreens& m_screens;
    Observation m_screensChange;
    bool m_failNextWindow = false;
};

} // namespace tavro
