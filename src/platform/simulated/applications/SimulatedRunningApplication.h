#pragma once

#include "platform/applications/RunningApplication.h"
#include "platform/simulated/applications/ApplicationID.h"
#include "platform/simulated/process/Journal.h"

#include <string>

namespace tavro {

/// A handle on one launch of an application.
class SimulatedRunningApplication final : public RunningApplication {
public:
    /// Where the application itself stands.
    class Host {
    public:
        virtual void requestHide(ApplicationID application) = 0;
        virtual void unhide(ApplicationID application) = 0;
        virtual void activate(ApplicationID application) = 0;

    protected:
        ~Host() = default;
    };

    SimulatedRunningApplication(ApplicationID id, std::string name, Host& host, Journal& journal);

    void hide() override;
    void unhide() override;
    void activate(unsigned options) override;
    bool isEqual(const RunningApplication& other) const override;

    ApplicationID id() const { return m_id; }

private:
    const ApplicationID m_id;
    const std::string m_name;
    Host& m_host;
    Journal& m_journal;
};

} // namespace tavro
