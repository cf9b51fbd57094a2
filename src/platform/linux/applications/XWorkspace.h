#pragma once

#include "platform/applications/Workspace.h"
#include "platform/linux/applications/XHiddenWindows.h"

namespace tavro {

class Desktop;
class Log;
class MainQueue;
class QtScreens;

/// Client windows grouped by application, as EWMH describes them.
class XWorkspace final : public Workspace {
public:
    XWorkspace(XConnection& x, DesktopSnapshots& snapshots, const QtScreens& screens, Desktop& desktop,
               MainQueue& queue, Log& log);
    ~XWorkspace() override;

    std::vector<std::shared_ptr<RunningApplication>> runningApplications() const override;
    std::shared_ptr<RunningApplication> frontmostApplication() const override;
    void stopHiding() override;
    void unhideAbandoned() override;
    std::optional<std::filesystem::path> desktopImageURL(const Screen& screen) const override;
    void open(const std::string& url) override;
    NotificationCenter& notificationCenter() override { return m_notificationCenter; }

    /// Brings back what was unhidden, and returns when the server has all that was asked of it; before the
    /// process ends.
    void finish();

private:
    void activeWindowChanged();
    static bool standsInFront(xcb_window_t window, bool isPanel);

    XConnection& m_x;
    const QtScreens& m_screens;
    Desktop& m_desktop;
    NotificationCenter m_notificationCenter;
    WindowManagerSync m_windowManager;
    std::shared_ptr<XHiddenWindows> m_hidden;
    /// The last window that stood in front.
    xcb_window_t m_front = XCB_NONE;
    std::string m_frontApplication;
    bool m_ownIsActive = false; // the last window that was active is this program's
    OncePerTurn m_followingActive;
    Observation m_activations;
};

} // namespace tavro
