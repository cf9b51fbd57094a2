#include "platform/simulated/process/SimulatedActions.h"

#include <algorithm>
#include <memory>

namespace tavro {

const Action* SimulatedActions::find(const std::string& name) const {
    const auto found = std::ranges::find(m_actions, name, &Action::name);
    return found == m_actions.end() ? nullptr : &*found;
}

bool SimulatedActions::activate(const std::string& name) {
    const auto* action = find(name);
    if (action && action->state)
        return setState(name, !action->state->get());
    if (action)
        m_queue.async(action->block);
    return action;
}

bool SimulatedActions::setState(const std::string& name, bool value) {
    const auto* action = find(name);
    if (!action || !action->state)
        return false;
    m_queue.async([set = action->state->set, value] { set(value); });
    return true;
}

std::optional<bool> SimulatedActions::state(const std::string& name) const {
    const auto* action = find(name);
    return action && action->state ? std::optional(action->state->get()) : std::nullopt;
}

Observation SimulatedActions::watch(const std::string& name, std::function<void(bool)> block) const {
    const auto& state = find(name)->state.value();
    return state.observe(
        [get = state.get, block = std::move(block), last = std::make_shared<bool>(state.get())] {
            if (const bool value = get(); std::exchange(*last, value) != value)
                block(value);
        });
}

} // namespace tavro
