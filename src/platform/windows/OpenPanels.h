#pragma once

#include "platform/windows/OpenPanel.h"

#include <memory>
#include <string>
#include <vector>

namespace tavro {

/// What a panel offers.
struct OpenPanelSettings {
    std::string title;
    bool allowsMultipleSelection = false;
    bool canChooseDirectories = false;
    bool canCreateDirectories = false;
    bool canChooseFiles = true;
    /// Endings of file names, without the dot.
    std::vector<std::string> allowedFileTypes;
};

/// Makes file choosers. Main thread only.
class OpenPanels {
public:
    virtual ~OpenPanels() = default;
    virtual std::shared_ptr<OpenPanel> openPanel(const OpenPanelSettings& settings) = 0;
};

} // namespace tavro
