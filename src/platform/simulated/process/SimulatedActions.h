#pragma once

#include "platform/process/Actions.h"
#include "platform/simulated/process/SimulatedMainQueue.h"

namespace tavro {

/// The other programs are what a test plays.
class SimulatedActions final : public Actions {
public:
    explicit SimulatedActions(SimulatedMainQueue& queue)
        : m_queue(queue) {}

    void offer(std::vector<Action> actions) override { m_actions = std::move(actions); }

    /// Another program asks for an action; whether there is such a one.
    bool activate(const std::string& name);
    /// Another program sets a state; whether there is such a one.
    bool setState(const std::string& name, bool value);
    /// As another program sees it; none where there is no such state.
    std::optional<bool> state(const std::string& name) const;
    /// Another program watches a state: the block gets every value that differs from the one before.
    [[nodiscard]] Observation watch(const std::string& name, std::function<void(bool)> block) const;
    void endProcess() { m_actions.clear(); }

private:
    const Action* find(const std::string& name) const;

    SimulatedMainQueue& m_queue;
    std::vector<Action> m_actions;
};

} // namespace tavro
