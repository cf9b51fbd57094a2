#pragma once

#include "platform/windows/OpenPanels.h"

#include <QString>

namespace tavro {

/// The desktop's own file chooser, where the toolkit's platform theme or the portal offers one, else the
/// toolkit's. Not modal. There is one on the screen at most: a panel that begins while another one is shown
/// takes its dialog over, as the user has left it, and the other one is cancelled.
class QtOpenPanels final : public OpenPanels {
public:
    QtOpenPanels() = default;
    QtOpenPanels(const QtOpenPanels&) = delete;
    QtOpenPanels& operator=(const QtOpenPanels&) = delete;
    /// Takes the panel that is shown off the screen; its handler is not called.
    ~QtOpenPanels() override;

    std::shared_ptr<OpenPanel> openPanel(const OpenPanelSettings& settings) override;

private:
    class Panel;

    std::weak_ptr<Panel> m_shown;
    QString m_folder; // where the user chose last
};

} // namespace tavro
