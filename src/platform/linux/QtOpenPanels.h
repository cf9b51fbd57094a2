#pragma once

#include "platform/OpenPanel.h"

namespace tavro {

/// The desktop's own file chooser, where the toolkit's platform theme or the portal offers one, else the
/// toolkit's. Not modal.
class QtOpenPanels final : public OpenPanels {
public:
    std::shared_ptr<OpenPanel> openPanel(const OpenPanelSettings& settings) override;
};

} // namespace tavro
