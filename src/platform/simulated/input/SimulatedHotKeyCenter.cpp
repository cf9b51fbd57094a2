#include "platform/simulated/input/SimulatedHotKeyCenter.h"

#include <algorithm>

namespace tavro {

namespace {
constexpr EventTargetRef dispatcher{1};
/// What a keyboard of the platform can send.
constexpr std::uint32_t lastKeyCode = 127;
} // namespace

SimulatedHotKeyCenter::SimulatedHotKeyCenter(Journal& journal, SimulatedMainQueue& queue)
    : m_journal(journal)
    , m_queue(queue) {}

EventTargetRef SimulatedHotKeyCenter::getEventDispatcherTarget() {
    return hasDispatcher ? dispatcher : EventTargetRef::none;
}

OSStatus SimulatedHotKeyCenter::installEventHandler(EventTargetRef, EventHandler handler,
                                                    std::span<const EventTypeSpec> events,
                                                    EventHandlerRef& handlerRef) {
    m_journal.record("hotKeyCenter.installEventHandler", events.size());
    m_handlers.push_back(std::move(handler));
    handlerRef = EventHandlerRef{m_handlers.size()};
    return noErr;
}

OSStatus SimulatedHotKeyCenter::registerEventHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                    EventHotKeyID id, EventTargetRef, std::uint32_t,
                                                    EventHotKeyRef& hotKey) {
    const Combination combination{keyCode, modifiers};
    m_journal.record("hotKeyCenter.registerEventHotKey", keyCode, modifiers, id.signature, id.id);
    if (keyCode > lastKeyCode)
        return eventHotKeyInvalidErr;
    if (m_ofOthers.contains(combination))
        return eventHotKeyExistsErr;
    hotKey = EventHotKeyRef{++m_lastReference};
    m_registrations.emplace(hotKey, Registration{combination, id});
    return noErr;
}

OSStatus SimulatedHotKeyCenter::unregisterEventHotKey(EventHotKeyRef hotKey) {
    const auto entry = m_registrations.find(hotKey);
    if (entry == m_registrations.end())
        return eventHotKeyInvalidErr;
    m_journal.record("hotKeyCenter.unregisterEventHotKey", entry->second.combination.keyCode,
                     entry->second.combination.modifiers);
    m_registrations.erase(entry);
    std::erase_if(m_pressed, [hotKey](const auto& pressed) { return pressed.second == hotKey; });
    return noErr;
}

OSStatus SimulatedHotKeyCenter::copySymbolicHotKeys(std::optional<PropertyList>& hotKeys) const {
    hotKeys = m_told;
    return m_told ? noErr : eventNotHandledErr;
}

bool SimulatedHotKeyCenter::press(Combination combination) {
    if (m_ofOthers.contains(combination))
        return true;
    bool isHotKey = false;
    for (const auto& [reference, registration] : m_registrations) {
        if (registration.combination != combination)
            continue;
        isHotKey = true;
        if (m_pressed.emplace(combination.keyCode, reference).second)
            post(reference, kEventHotKeyPressed);
    }
    return isHotKey;
}

void SimulatedHotKeyCenter::release(std::uint32_t keyCode) {
    for (const auto& [pressedCode, reference] : m_pressed)
        if (pressedCode == keyCode)
            post(reference, kEventHotKeyReleased);
    std::erase_if(m_pressed, [keyCode](const auto& pressed) { return pressed.first == keyCode; });
}

void SimulatedHotKeyCenter::type(Combination combination) {
    press(combination);
    release(combination.keyCode);
    m_queue.runUntilIdle();
}

bool SimulatedHotKeyCenter::otherProgramTakes(Combination combination) {
    const auto ours = registered();
    return std::ranges::find(ours, combination) == ours.end() && m_ofOthers.insert(combination).second;
}

OSStatus SimulatedHotKeyCenter::send(const HotKeyEvent* event) const {
    OSStatus status = eventNotHandledErr;
    for (const auto& handler : m_handlers)
        if ((status = handler(event)) == noErr)
            break;
    return status;
}

std::vector<SimulatedHotKeyCenter::Combination> SimulatedHotKeyCenter::registered() const {
    std::vector<Combination> combinations;
    for (const auto& entry : m_registrations)
        combinations.push_back(entry.second.combination);
    return combinations;
}

void SimulatedHotKeyCenter::endProcess() {
    m_registrations.clear();
    m_pressed.clear();
    m_handlers.clear();
}

void SimulatedHotKeyCenter::post(EventHotKeyRef hotKey, std::uint32_t kind) {
    m_queue.async([this, hotKey, kind, id = m_registrations.at(hotKey).id] {
        if (!m_registrations.contains(hotKey))
            return;
        const HotKeyEvent event{kind, id};
        send(&event);
    });
}

} // namespace tavro
