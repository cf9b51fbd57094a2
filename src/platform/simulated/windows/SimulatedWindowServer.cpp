#include "platform/simulated/windows/SimulatedWindowServer.h"

#include "platform/simulated/windows/SimulatedOverlayWindow.h"
#include "platform/simulated/windows/SimulatedPopover.h"
#include "platform/simulated/windows/SimulatedTitledWindow.h"

#include <utility>

namespace tavro {

SimulatedWindowServer::SimulatedWindowServer(SystemVersion version, Journal& journal,
                                             SimulatedScreens& screens)
    : m_version(version)
    , m_journal(journal)
    , m_screens(screens)
    , m_screensChange(screens.didChange([this] { rebuildDesktop(); })) {
    rebuildDesktop();
}

template <class SimulatedKind>
std::shared_ptr<SimulatedKind> SimulatedWindowServer::createWindow(const WindowSettings& settings) {
    if (std::exchange(m_failNextWindow, false))
        return nullptr;
    ServerWindow window{ApplicationID::self, "TavroPRO", "", settings.contentRect};
    window.isOrdered = false;
    const auto number = add(std::move(window));
    m_journal.record("windowServer.createWindow", static_cast<std::uint32_t>(number), settings.contentRect,
                     settings.styleMask, static_cast<int>(settings.backing), settings.defer);
    return std::make_shared<SimulatedKind>(number, *this, m_journal);
}

std::shared_ptr<OverlayWindow> SimulatedWindowServer::createOverlayWindow(const WindowSettings& settings) {
    return createWindow<SimulatedOverlayWindow>(settings);
}

std::shared_ptr<TitledWindow> SimulatedWindowServer::createTitledWindow(const WindowSettings& settings) {
    return createWindow<SimulatedTitledWindow>(settings);
}

std::shared_ptr<Popover> SimulatedWindowServer::createPopover() {
    return std::make_shared<SimulatedPopover>(m_journal);
}

int SimulatedWindowServer::levelForKey(WindowLevelKey key) const {
    return key == WindowLevelKey::normal ? WindowLevel::normal : desktopIconLevel;
}

void SimulatedWindowServer::rebuildDesktop() {
    removeWindowsOf(ApplicationID::system);
    int index = 0;
    for (const auto& screen : m_screens.screens()) {
        const auto name = m_version >= SystemVersion{14, 0} ? "Wallpaper-" + std::to_string(++index)
                                                            : std::string("Desktop Picture - Harbour");
        ServerWindow wallpaper{ApplicationID::system, "Dock", name, screen.frame, wallpaperLevel};
        wallpaper.canHide = false;
        wallpaper.color = 0xff205080;
        add(std::move(wallpaper));
        ServerWindow icons{ApplicationID::system, "Finder", "", screen.frame, desktopIconLevel};
        icons.canHide = false;
        add(std::move(icons));
    }
}

} // namespace tavro
