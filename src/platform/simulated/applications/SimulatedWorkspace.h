#pragma once

#include "platform/applications/Workspace.h"
#include "platform/simulated/applications/SimulatedRunningApplication.h"
#include "platform/simulated/process/SimulatedMainQueue.h"
#include "platform/simulated/windows/SimulatedWindowServer.h"

#include <string>
#include <utility>
#include <vector>

namespace tavro {

/// The applications of the session and what their user does with them. Changes are in force at once;
/// notifications come on the main queue. Other than on request, the application of a window that opens, or
/// that the user clicks, is the one in front.
class SimulatedWorkspace final : public Workspace, private SimulatedRunningApplication::Host {
public:
    SimulatedWorkspace(Journal& journal, SimulatedMainQueue& queue, SimulatedWindowServer& server);

    std::vector<std::shared_ptr<RunningApplication>> runningApplications() const override;
    std::shared_ptr<RunningApplication> frontmostApplication() const override;
    void stopHiding() override { m_isHiding = false; }
    void unhideAbandoned() override;
    std::optional<std::filesystem::path> desktopImageURL(const Screen& screen) const override;
    void open(const std::string& url) override { m_journal.record("workspace.open", url); }
    NotificationCenter& notificationCenter() override { return m_notificationCenter; }

    /// Starts an application, which has no window yet and does not come to the front.
    ApplicationID launch(const std::string& name);
    /// An application that quits takes its windows along.
    void quit(ApplicationID application);
    WindowNumber openWindow(ApplicationID application, const std::string& name, Rect frame);
    /// The user clicks on a window, minimises it, hides or chooses an application, or leaves all of them.
    void clickWindow(WindowNumber window);
    void minimise(WindowNumber window);
    void userHides(ApplicationID application) { hide(application); }
    void userActivates(ApplicationID application) { activate(application); }
    void userActivatesNothing() { setFrontmost(std::nullopt); }
    void setDesktopImage(const Screen& screen, std::filesystem::path file);

    bool isHidden(ApplicationID application) const;
    /// Whether the program under test has asked to hide, and not to stop it since.
    bool isHiding() const { return m_isHiding; }
    std::optional<ApplicationID> frontmost() const { return m_frontmost; }

    /// The program under test starts, ends, hears that it is not in front any more.
    void startSelf();
    void endSelf() { quit(ApplicationID::self); }
    [[nodiscard]] Observation selfResignsActive(std::function<void()> observer);

private:
    struct Application {
        ApplicationID id;
        std::string name;
        bool isHidden = false;
        bool isHiddenOnRequest = false;
    };

    void requestHide(ApplicationID application) override;
    void hide(ApplicationID application);
    void unhide(ApplicationID application) override;
    void activate(ApplicationID application) override;
    Application* find(ApplicationID application);
    std::shared_ptr<RunningApplication> handle(const Application& application) const;
    void setFrontmost(std::optional<ApplicationID> application);
    std::optional<ApplicationID> topmostVisible() const;

    Journal& m_journal;
    SimulatedMainQueue& m_queue;
    SimulatedWindowServer& m_server;
    NotificationCenter m_notificationCenter;
    ObserverList<> m_selfResignsActive;
    std::vector<Application> m_applications{{ApplicationID::system, "Dock"}};
    std::optional<ApplicationID> m_frontmost;
    bool m_isHiding = false;
    std::vector<std::pair<Screen, std::filesystem::path>> m_desktopImages;
    int m_lastID = static_cast<int>(ApplicationID::self);
};

} // namespace tavro
