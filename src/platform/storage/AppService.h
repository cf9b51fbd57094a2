#pragma once

#include <optional>
#include <string>

namespace tavro {

/// The application itself as a login item (`SMAppService.mainApp`, from generation 13 on). Main thread only.
class AppService {
public:
    /// By the platform's numbers.
    enum class Status : int {
        notRegistered = 0,
        enabled = 1,
        /// Registered, and switched off by the user elsewhere.
        requiresApproval = 2,
        notFound = 3,
    };

    virtual ~AppService() = default;
    /// Asked of the system anew each time.
    virtual Status status() const = 0;
    /// From the next login on the application starts. None, or the description of the error.
    [[nodiscard]] virtual std::optional<std::string> registerService() = 0;
    /// It does not any more. None, or the description of the error.
    [[nodiscard]] virtual std::optional<std::string> unregisterService() = 0;
};

} // namespace tavro
