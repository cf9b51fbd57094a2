#include "platform/linux/process/LinuxMachine.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>

namespace tavro {

namespace {

/// Asked once, at the start: an upgrade takes the file away from the process that runs.
std::filesystem::path runningProgram() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

std::filesystem::path helper(const char* name) {
    return runningProgram().parent_path() / TAVRO_HELPER_DIR / name;
}

std::unique_ptr<URLSession> makeURLSession(Log& log) {
    constexpr bool checksForUpdates = TAVRO_UPDATE_CHECK;
    return checksForUpdates ? std::make_unique<FetchURLSession>(helper("tavropro-fetch"), log) : nullptr;
}

/// On whatever thread asks.
std::vector<DesktopShortcut> shortcutsOfDesktop() {
    BoundedBus bus;
    const GSettings settings;
    return runningDesktop(bus, settings)->shortcuts();
}

/// Nothing waits for it, and nobody asks again.
std::optional<DesktopLook> lookOfDesktop() {
    constexpr std::chrono::seconds longest{3};
    BoundedBus bus;
    const GSettings settings(longest);
    return runningDesktop(bus, settings)->look();
}

DesktopWallpaper::Backgrounds backgroundsOfDesktop(const std::vector<DesktopScreen>& screens) {
    BoundedBus bus;
    const GSettings settings;
    const auto desktop = runningDesktop(bus, settings);
    DesktopWallpaper::Backgrounds backgrounds;
    for (const auto& screen : screens)
        backgrounds.push_back(desktop->background(screen));
    return backgrounds;
}

} // namespace

LinuxMachine::LinuxMachine(std::unique_ptr<XConnection> x, Log& log, TerminationSignals& signals, Views views,
                           std::filesystem::path defaultsFile)
    : m_x(std::move(x))
    , m_log(log)
    , m_bundle{"com.vantrelo.TavroPRO", {{"CFBundleShortVersionString", TAVRO_VERSION}}}
    , m_audioHardware(m_mainQueue, log)
    , m_desktop(runningDesktop(m_bus, m_settings))
    , m_appearance(*m_x, &lookOfDesktop, m_desktop->fileOfLook())
    , m_keyboard(*m_x, m_mainQueue)
    , m_eventMonitors(m_keyboard)
    , m_hotKeyCenter(*m_x, m_keyboard, &shortcutsOfDesktop, m_mainQueue, log)
    , m_idleInhibition([this](bool isSuspended) { m_x->suspendScreenSaver(isSuspended); })
    , m_bubbles(*m_x)
    , m_notificationSilencing(log, [this](bool areAway) { m_bubbles.keepAway(areAway); })
    , m_userDefaults(std::move(defaultsFile), m_mainQueue, log)
    , m_loginItem(AutostartEntry::standardFile(), runningProgram())
    , m_images(helper("tavropro-picture"), log)
    , m_screens(*m_x)
    , m_snapshots(*m_x, m_mainQueue)
    , m_urlSession(makeURLSession(log))
    , m_wallpaper(*m_x, m_snapshots, m_screens, helper("tavropro-picture"), &backgroundsOfDesktop)
    , m_windowList(*m_x, m_snapshots, m_wallpaper)
    , m_windowServer(*m_x, m_snapshots, m_wallpaper, std::move(views), m_mainQueue, log)
    , m_workspace(*m_x, m_snapshots, m_screens, *m_desktop, m_mainQueue, log)
    , m_application(signals,
                    [this] {
                        // What the audience sees comes first, then what may take its time.
                        m_workspace.finish();
                        m_audioHardware.finish();
                        QCoreApplication::processEvents(
                            QEventLoop::ExcludeUserInputEvents); // delivers the notifications of the above
                        finishStoring();
                        // What is asked of a notification server may wait for a note, and be noted in its
                        // turn.
                        do
                            m_userDefaults.synchronize();
                        while (m_notificationSilencing.finish());
                        m_actions.finish();
                    })
    , m_statusBar(*m_x, m_mainQueue, log, m_application)
    , m_controlStrip(m_statusBar.host(), m_mainQueue)
    , m_actions([this] { m_application.reopen(); }, m_mainQueue, log) {
    m_x->start();
}

// A picture that the user has chosen is on its way from a file to a file, and may be a large one.
void LinuxMachine::finishStoring() {
    constexpr std::chrono::seconds longest{10};
    QTimer end;
    end.setSingleShot(true);
    end.start(longest);
    while (end.isActive() && (m_images.isBusy() || m_fileManager.isBusy()))
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace tavro
