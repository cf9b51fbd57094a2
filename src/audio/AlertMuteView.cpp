#include "audio/AlertMuteView.h"

#include "platform/process/Process.h"
#include "platform/windows/OverlayWindow.h"

namespace tavro {

AlertMuteView& AlertMuteView::shared() {
    return Process::current().shared<AlertMuteView>();
}

AlertMuteView::~AlertMuteView() {
    closeAlert();
}

void AlertMuteView::closeAlert() {
    if (alertWindow && alertWindow->window)
        alertWindow->window->close();
    alertWindow.reset();
}

} // namespace tavro
