#include "popover/ContentView.h"

#include "platform/applications/Workspace.h"
#include "platform/process/Machine.h"
#include "platform/process/MainQueue.h"
#include "platform/process/Process.h"
#include "platform/storage/UserDefaults.h"
#include "popover/Shell.h"

#include <iterator>

namespace tavro {

namespace {

/// A little after the animation.
constexpr MainQueue::Duration toggleDelay(0.23);

constexpr CustomToogleStyle bigSwitch{35,
                                      {{{{{0.52281249f, 0.54533732f, 0.99583328f, 1}, 0.1145833358168602},
                                         {{0.9375f, 0.59746301f, 0.32421875f, 1}, 0.5339373350143433},
                                         {{0.99583334f, 0.88434035f, 0.33194441f, 1}, 1.0}}},
                                       {0.011520732226956487, 0.758474560529625},
                                       {0.9193547769693876, 0.18220330854442857}}};

} // namespace

const CustomToogleStyle& ContentView::headerStyle() {
    return bigSwitch;
}

ContentView::ContentView(UserSettings& settings, VersionObserver& versionObserver, Shell& appDelegate)
    : settings(settings)
    , versionObserver(versionObserver)
    , appDelegate(appDelegate) {}

std::optional<InAppAlert> ContentView::banner() const {
    if (versionObserver.loading() || versionObserver.isUpdated())
        return std::nullopt;
    return InAppAlert{"🎉 New version is available. Click to update"};
}

std::vector<Observation> ContentView::willChange(const std::function<void()>& observer) const {
    auto observations = settings.willChange(observer);
    auto ofVersion = versionObserver.willChange(observer);
    std::move(ofVersion.begin(), ofVersion.end(), std::back_inserter(observations));
    return observations;
}

void ContentView::tapHeader() const {
    settings.setTavroIsOn(!settings.tavroIsOn());
    machine().mainQueue().asyncAfter(toggleDelay, [&appDelegate = appDelegate] {
        appDelegate.closePopover(); // nobody presents it
        appDelegate.toggle();
    });
}

void ContentView::tapOption(std::size_t index) const {
    if (index >= settings.options().size())
        return;
    settings.setOptionIsOn(index, !settings.options()[index].isOn);
    const auto& option = settings.options()[index];
    if (option.id == "changeWallpaper" && option.isOn &&
        !machine().userDefaults().boolForKey(Constants::wallpaperFileKey))
        appDelegate.openPreferenceWindow();
}

void ContentView::tapBanner() const {
    machine().workspace().open(Constants::changelogURL);
}

} // namespace tavro
