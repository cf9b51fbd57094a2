#include "app/HideApps.h"

#include "platform/applications/RunningApplication.h"
#include "platform/applications/Workspace.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"

namespace tavro {

namespace {

struct LastActiveApp {
    std::shared_ptr<RunningApplication> application;
};

std::shared_ptr<RunningApplication>& remembered() {
    return Process::current().shared<LastActiveApp>().application;
}

Workspace& workspace() {
    return machine().workspace();
}

} // namespace

const std::shared_ptr<RunningApplication>& HideApps::lastActiveApp() {
    return remembered();
}

void HideApps::rememberFrontmost() {
    remembered() = workspace().frontmostApplication();
}

void HideApps::hideOthers() {
    const auto applications = workspace().runningApplications();
    rememberFrontmost();
    for (const auto& application : applications)
        if (!lastActiveApp() || !application->isEqual(*lastActiveApp()))
            application->hide();
}

void HideApps::stopHiding() {
    workspace().stopHiding();
}

void HideApps::showAll() {
    const auto applications = workspace().runningApplications();
    rememberFrontmost();
    for (const auto& application : applications)
        application->unhide();
    if (lastActiveApp())
        lastActiveApp()->activate(ApplicationActivationOption::ignoringOtherApps);
}

} // namespace tavro
