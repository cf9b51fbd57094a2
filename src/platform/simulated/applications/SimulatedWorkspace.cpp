#include "platform/simulated/applications/SimulatedWorkspace.h"

#include <algorithm>
#include <ranges>

namespace tavro {

SimulatedWorkspace::SimulatedWorkspace(Journal& journal, SimulatedMainQueue& queue,
                                       SimulatedWindowServer& server)
    : m_journal(journal)
    , m_queue(queue)
    , m_server(server) {}

std::vector<std::shared_ptr<RunningApplication>> SimulatedWorkspace::runningApplications() const {
    std::vector<std::shared_ptr<RunningApplication>> handles;
    for (const auto& application : m_applications)
        handles.push_back(handle(application));
    return handles;
}

std::shared_ptr<RunningApplication> SimulatedWorkspace::frontmostApplication() const {
    const auto application = std::ranges::find(m_applications, m_frontmost, &Application::id);
    return application == m_applications.end() ? nullptr : handle(*application);
}

std::optional<std::filesystem::path> SimulatedWorkspace::desktopImageURL(const Screen& screen) const {
    const auto image =
        std::ranges::find(m_desktopImages, screen, &decltype(m_desktopImages)::value_type::first);
    return image == m_desktopImages.end() ? std::nullopt : std::optional(image->second);
}

ApplicationID SimulatedWorkspace::launch(const std::string& name) {
    m_applications.push_back({ApplicationID(++m_lastID), name});
    return m_applications.back().id;
}

void SimulatedWorkspace::startSelf() {
    m_applications.push_back({ApplicationID::self, "TavroPRO"});
}

void SimulatedWorkspace::quit(ApplicationID application) {
    std::erase_if(m_applications, [&](const auto& entry) { return entry.id == application; });
    m_server.removeWindowsOf(application);
    if (m_frontmost == application)
        setFrontmost(topmostVisible());
}

WindowNumber SimulatedWorkspace::openWindow(ApplicationID application, const std::string& name, Rect frame) {
    const auto number = m_server.add({application, find(application)->name, name, frame});
    setFrontmost(application);
    return number;
}

void SimulatedWorkspace::clickWindow(WindowNumber number) {
    auto* window = m_server.find(number);
    if (!window)
        return;
    window->isMinimised = false;
    const auto owner = window->owner;
    m_server.orderFront(number);
    unhide(owner);
    setFrontmost(owner);
}

void SimulatedWorkspace::minimise(WindowNumber number) {
    if (auto* window = m_server.find(number))
        window->isMinimised = true;
}

void SimulatedWorkspace::setDesktopImage(const Screen& screen, std::filesystem::path file) {
    m_desktopImages.insert(m_desktopImages.begin(), {screen, std::move(file)});
}

bool SimulatedWorkspace::isHidden(ApplicationID application) const {
    const auto entry = std::ranges::find(m_applications, application, &Application::id);
    return entry != m_applications.end() && entry->isHidden;
}

Observation SimulatedWorkspace::selfResignsActive(std::function<void()> observer) {
    return m_selfResignsActive.add(std::move(observer));
}

void SimulatedWorkspace::requestHide(ApplicationID application) {
    m_isHiding = true;
    auto* entry = find(application);
    const bool wasHidden = entry && entry->isHidden;
    hide(application);
    if (entry && !wasHidden)
        entry->isHiddenOnRequest = entry->isHidden;
}

void SimulatedWorkspace::unhideAbandoned() {
    for (const auto& application : m_applications)
        if (application.isHiddenOnRequest)
            unhide(application.id);
}

void SimulatedWorkspace::hide(ApplicationID application) {
    auto* entry = find(application);
    if (!entry || application == ApplicationID::system)
        return;
    entry->isHidden = true;
    m_server.setHidden(application, true);
    if (m_frontmost == application)
        setFrontmost(topmostVisible());
}

void SimulatedWorkspace::unhide(ApplicationID application) {
    if (auto* entry = find(application)) {
        entry->isHidden = entry->isHiddenOnRequest = false;
        m_server.setHidden(application, false);
    }
}

void SimulatedWorkspace::activate(ApplicationID application) {
    if (!find(application) || application == ApplicationID::system)
        return;
    unhide(application);
    for (const auto& window : m_server.windows() | std::views::reverse)
        if (window.owner == application && window.level == 0 && m_server.isVisible(window)) {
            m_server.orderFront(window.number);
            break;
        }
    setFrontmost(application);
}

SimulatedWorkspace::Application* SimulatedWorkspace::find(ApplicationID application) {
    const auto entry = std::ranges::find(m_applications, application, &Application::id);
    return entry == m_applications.end() ? nullptr : &*entry;
}

std::shared_ptr<RunningApplication> SimulatedWorkspace::handle(const Application& application) const {
    // The handle changes the workspace that it came from; asking for it does not.
    SimulatedRunningApplication::Host& host = const_cast<SimulatedWorkspace&>(*this);
    return std::make_shared<SimulatedRunningApplication>(application.id, application.name, host, m_journal);
}

void SimulatedWorkspace::setFrontmost(std::optional<ApplicationID> application) {
    if (m_frontmost == application)
        return;
    if (m_frontmost == ApplicationID::self)
        m_queue.async([this] { m_selfResignsActive.notify(); });
    m_frontmost = application;
    if (application && application != ApplicationID::self)
        m_queue.async([this] { m_notificationCenter.post(workspaceDidActivateApplication); });
}

std::optional<ApplicationID> SimulatedWorkspace::topmostVisible() const {
    for (const auto& window : m_server.windows() | std::views::reverse)
        if (window.level == 0 && m_server.isVisible(window))
            return window.owner;
    return std::nullopt;
}

} // namespace tavro
