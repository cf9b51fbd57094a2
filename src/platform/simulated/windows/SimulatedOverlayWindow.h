#pragma once

#include "platform/simulated/windows/SimulatedWindow.h"
#include "platform/windows/OverlayWindow.h"

namespace tavro {

class SimulatedOverlayWindow final : public SimulatedWindow<OverlayWindow> {
public:
    using SimulatedWindow::SimulatedWindow;

    void setCollectionBehavior(unsigned behavior) override;
    void setStyleMask(unsigned mask) override;
    /// In the journal by the name of the platform's own call, such as "setCanHide".
    void setAttribute(WindowAttribute attribute, bool isSo) override;
    void setBackgroundColor(Color color) override;
    void setFrame(Rect frame, bool display) override;
};

} // namespace tavro
