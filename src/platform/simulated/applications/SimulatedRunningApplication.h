#pragma once

#include "platform/applications/RunningApplication.h"
#include "platform/simulated/applications/SimulatedWorkspace.h"

namespace tavro {

/// A handle on one launch of an application; the application itself stands in the workspace.
class SimulatedRunningApplication final : public RunningApplication {
public:
    SimulatedRunningApplication(ApplicationID id, std::string name, SimulatedWorkspace& workspace);

    void hide() override;
    void unhide() override;
    void activate(unsigned options) override;
    bool isEqual(const RunningApplication& other) const override;

    ApplicationID id() const { return m_id; }

private:
    const ApplicationID m_id;
    const std::string m_name;
    SimulatedWorkspace& m_workspace;
};

} // namespace tavro
