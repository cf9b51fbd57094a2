#include "SimulatedRig.h"

#include <algorithm>
#include <cstdlib>

namespace tavro {

SimulatedRig::SimulatedRig() {
    m_mac.workspace().startSelf();
    auto name = (std::filesystem::temp_directory_path() / "tavro-XXXXXX").string();
    if (const auto* created = mkdtemp(name.data()))
        m_folder = created;
}

SimulatedRig::~SimulatedRig() {
    std::filesystem::remove_all(m_folder);
}

bool SimulatedRig::waitUntil(const std::function<bool()>& condition) {
    const auto deadline = now() + MainQueue::Duration(10);
    m_mac.mainQueue().runUntilIdle();
    while (!condition() && now() < deadline)
        m_mac.mainQueue().advance(MainQueue::Duration(0.01));
    return condition();
}

void SimulatedRig::relaunch() {
    m_mac.endProcess();
    m_mac.workspace().startSelf();
}

void SimulatedRig::writePicture(const std::filesystem::path& file, int width, int height,
                                std::uint32_t color) {
    SimulatedImages::write(file, width, height, color);
}

void SimulatedRig::openWindow(const std::string& application, const std::string& title, Rect frame) {
    if (!m_applications.contains(application))
        m_applications.emplace(application, m_mac.workspace().launch(application));
    m_mac.workspace().openWindow(m_applications.at(application), title, frame);
}

void SimulatedRig::quit(const std::string& application) {
    m_mac.workspace().quit(m_applications.at(application));
    m_applications.erase(application);
}

std::vector<std::string> SimulatedRig::shownTitles() const {
    std::vector<std::string> titles;
    for (const auto& window : m_mac.windowServer().windows())
        if (m_applications.contains(window.ownerName) && m_mac.windowServer().isVisible(window))
            titles.push_back(window.name);
    return titles;
}

std::optional<Rect> SimulatedRig::shownFrame(WindowNumber number) const {
    const auto* window = m_mac.windowServer().find(number);
    return window && m_mac.windowServer().isVisible(*window) ? std::optional(window->frame) : std::nullopt;
}

void SimulatedRig::click(EventType type, unsigned modifierFlags) {
    m_mac.statusBar().click(*m_mac.statusBar().items().front(), type, modifierFlags);
}

std::string SimulatedRig::addInputDevice(const std::string& name) {
    return audio().device(audio().plugIn(SimulatedAudioHardware::microphone(name))).uid;
}

std::string SimulatedRig::addOutputDevice(const std::string& name) {
    return audio().device(audio().plugIn(SimulatedAudioHardware::speaker(name))).uid;
}

void SimulatedRig::pressKey(std::uint32_t keyCode, std::uint32_t modifiers) {
    m_heldModifiers |= modifiers;
    m_mac.hotKeyCenter().press({keyCode, m_heldModifiers});
}

WindowNumber SimulatedRig::number(const std::string& title) const {
    const auto& windows = m_mac.windowServer().windows();
    return std::ranges::find(windows, title, &ServerWindow::name)->number;
}

} // namespace tavro
