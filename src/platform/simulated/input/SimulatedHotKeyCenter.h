#pragma once

#include "platform/input/HotKeyCenter.h"
#include "platform/simulated/process/Journal.h"
#include "platform/simulated/process/SimulatedMainQueue.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace tavro {

/// A keyboard with a user, and other programs that take keys before us. Events come on the main queue.
class SimulatedHotKeyCenter final : public HotKeyCenter {
public:
    struct Combination {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        auto operator<=>(const Combination&) const = default;
    };

    SimulatedHotKeyCenter(Journal& journal, SimulatedMainQueue& queue);

    EventTargetRef getEventDispatcherTarget() override;
    OSStatus installEventHandler(EventTargetRef target, EventHandler handler,
                                 std::span<const EventTypeSpec> events, EventHandlerRef& handlerRef) override;
    OSStatus registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers, EventHotKeyID id,
                                 EventTargetRef target, std::uint32_t options,
                                 EventHotKeyRef& hotKey) override;
    OSStatus unregisterEventHotKey(EventHotKeyRef hotKey) override;
    void refreshSymbolicHotKeys() override { m_told = symbolicHotKeys; }
    OSStatus copySymbolicHotKeys(std::optional<PropertyList>& hotKeys) const override;

    /// The user presses a key, and lets it go; whether the combination is anybody's hot key.
    bool press(Combination combination);
    void release(std::uint32_t keyCode);
    /// Both, and what comes of it.
    void type(Combination combination);
    /// Another program takes the combination, if it is free.
    bool otherProgramTakes(Combination combination);
    void otherProgramLetsGo(Combination combination) { m_ofOthers.erase(combination); }
    /// Any event, to the handlers, in order; what the last one answered.
    OSStatus send(const HotKeyEvent* event) const;

    /// What is registered, in order of registration.
    std::vector<Combination> registered() const;
    std::size_t handlerCount() const { return m_handlers.size(); }
    /// The system's own hot keys; without them they cannot be read.
    std::optional<PropertyList> symbolicHotKeys = PropertyList(PropertyList::Array{});
    /// A fault: there is no event dispatcher.
    bool hasDispatcher = true;
    /// The process has ended, and let go of its keys.
    void endProcess();

private:
    struct Registration {
        Combination combination;
        EventHotKeyID id;
    };

    void post(EventHotKeyRef hotKey, std::uint32_t kind);

    Journal& m_journal;
    SimulatedMainQueue& m_queue;
    std::optional<PropertyList> m_told = symbolicHotKeys;
    std::uint64_t m_lastReference = 0;
    std::map<EventHotKeyRef, Registration> m_registrations;
    std::set<std::pair<std::uint32_t, EventHotKeyRef>> m_pressed; // by key code
    std::set<Combination> m_ofOthers;
    std::vector<EventHandler> m_handlers;
};

} // namespace tavro
