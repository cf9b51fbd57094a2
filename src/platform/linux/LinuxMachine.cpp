#include "platform/linux/LinuxMachine.h"

namespace tavro {

LinuxMachine::LinuxMachine(std::unique_ptr<XConnection> x, Log& log, TerminationSignals& signals,
                           ViewPainter painter, std::filesystem::path defaultsFile)
    : m_x(std::move(x))
    , m_log(log)
    , m_audioHardware(m_mainQueue, log)
    , m_keyboard(*m_x, m_mainQueue)
    , m_eventMonitors(m_keyboard)
    , m_hotKeyCenter(*m_x, m_keyboard, m_mainQueue, log)
    , m_userDefaults(std::move(defaultsFile), m_mainQueue, log)
    , m_images(log)
    , m_screens(*m_x)
    , m_windowList(*m_x)
    , m_windowServer(*m_x, std::move(painter))
    , m_workspace(*m_x, m_screens, m_mainQueue, log)
    , m_application(signals,
                    [this] {
                        m_workspace.finish();
                        m_userDefaults.synchronize();
                    })
    , m_statusBar(*m_x, m_mainQueue, log, m_application)
    , m_controlStrip(m_statusBar.host()) {
    m_x->start();
}

} // namespace tavro
