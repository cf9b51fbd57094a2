#include "platform/linux/applications/XWorkspace.h"

#include "platform/linux/applications/XRunningApplication.h"
#include "platform/linux/desktops/Desktop.h"
#include "platform/linux/process/Programs.h"
#include "platform/linux/windows/DesktopWallpaper.h"
#include "platform/linux/windows/QtScreens.h"

#include <QDesktopServices>
#include <QUrl>
#include <QWidget>

#include <algorithm>
#include <set>

namespace tavro {

XWorkspace::XWorkspace(XConnection& x, DesktopSnapshots& snapshots, const QtScreens& screens,
                       Desktop& desktop, MainQueue& queue, Log& log)
    : m_x(x)
    , m_screens(screens)
    , m_desktop(desktop)
    , m_windowManager(x)
    , m_hidden(std::make_shared<XHiddenWindows>(x, snapshots, m_windowManager, queue, log))
    , m_followingActive(queue, [this] { activeWindowChanged(); })
    , m_activations(
          x.onPropertyChange(x.root(), x.atoms().netActiveWindow, [this] { m_followingActive.schedule(); })) {
    activeWindowChanged();
}

XWorkspace::~XWorkspace() = default;

std::vector<std::shared_ptr<RunningApplication>> XWorkspace::runningApplications() const {
    const auto clients = m_hidden->clients();
    std::set<std::string> seen;
    std::vector<std::shared_ptr<RunningApplication>> applications;
    for (const auto& window : clients->windows)
        if (seen.insert(window.application).second)
            applications.push_back(
                std::make_shared<XRunningApplication>(window.application, XCB_NONE, m_hidden));
    return applications;
}

std::shared_ptr<RunningApplication> XWorkspace::frontmostApplication() const {
    const auto clients = m_hidden->clients();
    const auto active = m_hidden->front(clients->active);
    const auto* known = clients->find(active);
    // When a window of ours has gone, it takes a moment until the one below is active.
    const bool hasOwnGone = active == XCB_NONE && m_ownIsActive;
    const bool isPassing = active != XCB_NONE && !standsInFront(active, known && known->isPanel);
    const auto* front = clients->find(hasOwnGone || isPassing ? m_front : active);
    if (!front && hasOwnGone)
        front = clients->uppermost();
    if (!front)
        return nullptr;
    return std::make_shared<XRunningApplication>(front->application, front->id, m_hidden);
}

std::optional<std::filesystem::path> XWorkspace::desktopImageURL(const Screen& screen) const {
    for (const auto& known : DesktopWallpaper::screens(m_x, m_screens))
        if (known.connector == m_screens.connector(screen)) {
            const auto background = m_desktop.background(known);
            return background ? background->picture : std::nullopt;
        }
    return std::nullopt;
}

void XWorkspace::open(const std::string& url) {
    const auto address = QString::fromStdString(url);
    if (!startDetached("xdg-open", {address}))
        QDesktopServices::openUrl(address); // by the variables of the session
}

void XWorkspace::stopHiding() {
    m_hidden->stopHiding();
}

// All marks are those of processes that are gone: there is one of this program for a display.
void XWorkspace::unhideAbandoned() {
    const auto clients = m_hidden->readClients();
    bool anyIsHidden = false;
    for (const auto& window : clients->windows)
        if (window.hiddenMark) {
            m_hidden->unhide(window.application);
            anyIsHidden = true;
        }
    if (anyIsHidden && clients->find(clients->active))
        m_hidden->bringToFront(clients->active);
    if (anyIsHidden)
        m_hidden->settle(); // or the popover of the launch would lose the focus to them
}

void XWorkspace::finish() {
    m_hidden->finish();
}

void XWorkspace::activeWindowChanged() {
    const auto active = m_x.value(m_x.request(m_x.root(), m_x.atoms().netActiveWindow)).value_or(XCB_NONE);
    if (active == XCB_NONE)
        return;
    m_ownIsActive = QWidget::find(active) != nullptr;
    const auto types = m_x.values(m_x.request(active, m_x.atoms().netWmWindowType));
    if (!standsInFront(active, std::ranges::count(types, m_x.atoms().netWmWindowTypeDock) > 0))
        return;
    const auto application = applicationOf(m_x, active);
    m_front = active;
    if (std::exchange(m_frontApplication, application) != application && !m_ownIsActive)
        m_notificationCenter.post(workspaceDidActivateApplication);
}

/// Our popover and panels take the focus without being what the user works in.
bool XWorkspace::standsInFront(xcb_window_t window, bool isPanel) {
    const auto* own = QWidget::find(window);
    return own ? own->windowType() != Qt::Tool : !isPanel;
}

} // namespace tavro
