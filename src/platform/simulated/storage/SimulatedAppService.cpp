#include "platform/simulated/storage/SimulatedAppService.h"

namespace tavro {

std::optional<std::string> SimulatedAppService::registerService() {
    m_journal.record("appService.register");
    if (!registerError)
        m_status = Status::enabled;
    return registerError;
}

std::optional<std::string> SimulatedAppService::unregisterService() {
    m_journal.record("appService.unregister");
    if (!unregisterError)
        m_status = Status::notRegistered;
    return unregisterError;
}

} // namespace tavro
