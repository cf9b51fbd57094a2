#include "audio/ToggleMicMute.h"

#include "audio/AlertMuteView.h"
#include "audio/MuteMic.h"
#include "platform/process/Accessibility.h"
#include "platform/process/Machine.h"
#include "platform/process/MainQueue.h"
#include "platform/process/Process.h"

namespace tavro {

void toggleMicMute() {
    constexpr MainQueue::Duration shownTime(1.0);
    auto& alert = AlertMuteView::shared();
    if (alert.alertWindow)
        return;
    const bool mute = !MuteMic::isMuted();
    alert.alertWindow.emplace(mute);
    machine().accessibility().announce(alert.alertWindow->body().text);
    MuteMic::setMute(mute);
    machine().mainQueue().asyncAfter(shownTime, [] { AlertMuteView::shared().closeAlert(); });
}

} // namespace tavro
