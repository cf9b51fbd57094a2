#include "audio/ToggleMicMute.h"

#include "audio/AlertMuteView.h"
#include "audio/MuteMic.h"
#include "platform/Machine.h"
#include "platform/MainQueue.h"
#include "platform/Process.h"

namespace tavro {

void toggleMicMute() {
    constexpr MainQueue::Duration shownTime(1.0);
    auto& alert = AlertMuteView::shared();
    if (alert.alertWindow)
        return;
    const bool mute = !MuteMic::isMuted();
    alert.alertWindow.emplace(mute);
    MuteMic::setMute(mute);
    Process::current().machine().mainQueue().asyncAfter(shownTime,
                                                        [] { AlertMuteView::shared().closeAlert(); });
}

} // namespace tavro
