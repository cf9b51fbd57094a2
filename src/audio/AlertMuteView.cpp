#include "audio/AlertMuteView.h"

#include "platform/Process.h"
#include "platform/Window.h"

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
