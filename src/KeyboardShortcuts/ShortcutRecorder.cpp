#include "KeyboardShortcuts/ShortcutRecorder.h"

#include "KeyboardShortcuts/CarbonKeyboardShortcuts.h"
#include "KeyboardShortcuts/Key.h"
#include "KeyboardShortcuts/RecorderField.h"
#include "platform/menubar/Menu.h"
#include "platform/process/Application.h"
#include "platform/process/Machine.h"
#include "platform/process/MainQueue.h"
#include "platform/process/Process.h"

namespace tavro::KeyboardShortcuts {

namespace {

constexpr auto idlePlaceholder = "Record Shortcut";
constexpr auto recordingPlaceholder = "Press Shortcut";
constexpr double clickMargin = 3;

/// Without what says nothing about the user's fingers.
unsigned plainModifiers(const Event& event) {
    using namespace EventModifierFlags;
    return event.modifierFlags & deviceIndependentMask & ~(capsLock | numericPad | function);
}

bool isFunctionKey(SpecialKey key) {
    return SpecialKey::f1 <= key && key <= SpecialKey::f35;
}

bool clears(SpecialKey key) {
    return key == SpecialKey::delete_ || key == SpecialKey::deleteForward || key == SpecialKey::backspace;
}

} // namespace

ShortcutRecorder::ShortcutRecorder(RecorderField& field, Name name, OnChange onChange)
    : m_field(field)
    , m_shortcutName(std::move(name))
    , m_onChange(std::move(onChange)) {
    CarbonKeyboardShortcuts::refreshSystemShortcuts();
    m_field.setPlaceholder(idlePlaceholder);
    showStoredText();
    m_observer = Process::current().notificationCenter().addObserver(
        shortcutByNameDidChange, [this](const NotificationCenter::UserInfo& info) {
            const auto entry = info.find("name");
            const auto* changed = entry == info.end() ? nullptr : std::any_cast<Name>(&entry->second);
            if (changed && *changed == m_shortcutName)
                showStoredText();
        });
}

ShortcutRecorder::~ShortcutRecorder() {
    if (isRecording())
        setPaused(false);
}

// Later, because the field may be in the middle of an event that it still has to finish.
void ShortcutRecorder::setShortcutName(const Name& name) {
    if (name == m_shortcutName)
        return;
    m_shortcutName = name;
    showStoredText();
    machine().mainQueue().async([this, alive = std::weak_ptr(m_isAlive)] {
        if (!alive.expired())
            m_field.blur();
    });
}

void ShortcutRecorder::showStoredText() {
    const auto shortcut = getShortcut(m_shortcutName);
    m_field.setText(shortcut ? shortcut->description() : "", shortcut ? shortcut->names() : "");
}

// While a combination is recorded none may act, or pressing the present one again would switch the mode.
void ShortcutRecorder::becomeFirstResponder() {
    CarbonKeyboardShortcuts::refreshSystemShortcuts(); // now, before a key is waited for
    m_field.setPlaceholder(recordingPlaceholder);
    setPaused(true);
    constexpr auto events = eventMask(EventType::keyDown) | eventMask(EventType::leftMouseUp) |
                            eventMask(EventType::rightMouseUp);
    m_eventMonitor = std::make_unique<LocalEventMonitor>(
        events, [this, alive = std::weak_ptr(m_isAlive)](const Event& event) {
            return alive.expired() ? std::nullopt : handle(event);
        });
    m_eventMonitor->start();
}

void ShortcutRecorder::controlTextDidEndEditing() {
    m_eventMonitor.reset();
    m_field.setPlaceholder(idlePlaceholder);
    setPaused(false);
}

void ShortcutRecorder::controlTextDidChange() {
    if (!m_field.text().empty())
        return;
    setShortcut(std::nullopt, m_shortcutName);
    if (m_onChange)
        m_onChange(std::nullopt);
    if (m_field.text().empty()) // still: whoever was notified may have set another
        m_field.focus();
}

std::optional<Event> ShortcutRecorder::handle(const Event& event) {
    if (event.type == EventType::keyDown)
        return handleKeyDown(event);
    // A click beside the field ends recording, and goes on to what it was meant for.
    const bool isOutside = !m_field.contains(event.location, clickMargin);
    if (isOutside)
        m_field.blur();
    return std::nullopt;
}

// Tab alone still leads to the next control; everything else ends here, so that no key types into the field.
std::optional<Event> ShortcutRecorder::handleKeyDown(const Event& event) {
    const bool hasModifiers = plainModifiers(event) != 0;
    if (!hasModifiers && event.specialKey == SpecialKey::tab) {
        m_field.blur();
        return event;
    }
    if (!hasModifiers && event.keyCode == rawValue(Key::escape))
        m_field.blur();
    else if (!hasModifiers && clears(event.specialKey))
        m_field.clickClearButton();
    else if (!hasModifiers && !isFunctionKey(event.specialKey))
        m_field.beep();
    else
        record(event);
    return std::nullopt;
}

void ShortcutRecorder::record(const Event& event) {
    const auto shortcut = Shortcut::of(event);
    if (!shortcut)
        return m_field.beep();
    if (isRefused(*shortcut))
        return;
    setShortcut(shortcut, m_shortcutName); // whose notification shows it
    if (m_onChange)
        m_onChange(shortcut);
    m_field.blur();
}

// The program's own menu first: its items would win over the shortcut whenever the program is active.
bool ShortcutRecorder::isRefused(const Shortcut& shortcut) {
    const auto menu = machine().application().mainMenu();
    if (const auto* item = menu ? shortcut.menuItemWithMatchingShortcut(*menu) : nullptr) {
        refuse("This keyboard shortcut cannot be used as it's already used by the “" + item->title +
                   "” menu item.",
               "");
        return true;
    }
    if (!CarbonKeyboardShortcuts::isTakenBySystem(shortcut))
        return false;
    refuse(
        "This keyboard shortcut cannot be used as it's already a system-wide keyboard shortcut.",
        "Most system-wide keyboard shortcuts can be changed in “System Preferences › Keyboard › Shortcuts“.");
    return true;
}

// The warning needs the keyboard, so recording ends for it and begins again after it; the user may have
// closed the window meanwhile.
void ShortcutRecorder::refuse(const std::string& message, const std::string& information) {
    const std::weak_ptr alive(m_isAlive);
    m_field.blur();
    m_field.showWarning(message, information);
    if (!alive.expired())
        m_field.focus();
}

} // namespace tavro::KeyboardShortcuts
