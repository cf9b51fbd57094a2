#pragma once

#include <filesystem>
#include <functional>
#include <optional>

namespace tavro {

/// How a panel ended, by the platform's numbers.
enum class ModalResponse : int { cancel = 0, ok = 1 };

/// The system's file chooser.
class OpenPanel {
public:
    virtual ~OpenPanel() = default;
    /// Shows it and returns at once. The handler is called once, on the main thread, when the user has chosen
    /// or cancelled.
    virtual void begin(std::function<void(ModalResponse)> completionHandler) = 0;
    /// The chosen file; none before, and where the user chose nothing that is a file of this computer.
    virtual std::optional<std::filesystem::path> url() const = 0;
    /// Takes it off the screen.
    virtual void close() = 0;
};

} // namespace tavro
