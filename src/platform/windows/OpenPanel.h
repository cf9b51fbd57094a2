#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavro {

/// How a panel ended, by the platform's numbers.
enum class ModalResponse : int { cancel = 0, ok = 1 };

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

/// The system's file chooser.
class OpenPanel {
public:
    virtual ~OpenPanel() = default;
    /// Shows it and returns at once. The handler is called once, on the main thread, when the user has chosen
    /// or cancelled.
    virtual void begin(std::function<void(ModalResponse)> completionHandler) = 0;
    /// The chosen file; none before, and where the user chose nothing that is a file of this computer.
    virtual std::optional<std::filesystem::path> url() const = 0;
    virtual void close() = 0;
};

/// Makes file choosers. Main thread only.
class OpenPanels {
public:
    virtual ~OpenPanels() = default;
    virtual std::shared_ptr<OpenPanel> openPanel(const OpenPanelSettings& settings) = 0;
};

} // namespace tavro
