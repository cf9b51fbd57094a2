#pragma once

#include "platform/simulated/process/Journal.h"
#include "platform/storage/AppService.h"

namespace tavro {

/// The login-item database as far as it knows the application.
class SimulatedAppService final : public AppService {
public:
    explicit SimulatedAppService(Journal& journal)
        : m_journal(journal) {}

    Status status() const override { return m_status; }
    std::optional<std::string> registerService() override;
    std::optional<std::string> unregisterService() override;

    /// The user switches it in the system's own settings.
    void userSets(Status status) { m_status = status; }
    /// Faults: what the system answers to either request while it is set.
    std::optional<std::string> registerError, unregisterError;

private:
    Journal& m_journal;
    Status m_status = Status::notRegistered;
};

} // namespace tavro
