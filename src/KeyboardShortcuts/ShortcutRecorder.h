#pragma once

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "KeyboardShortcuts/LocalEventMonitor.h"
#include "platform/process/ObserverList.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tavro::KeyboardShortcuts {

class RecorderField;

/// Records the combination of one name: takes the next key press while its field has the keyboard focus.
/// Global shortcuts rest as long. Main thread only.
class ShortcutRecorder {
public:
    /// Told of each combination that was recorded, and of none when it was cleared.
    using OnChange = std::function<void(const std::optional<Shortcut>&)>;

    /// The field outlives the recorder, and shows the stored combination from now on.
    ShortcutRecorder(RecorderField& field, Name name, OnChange onChange = {});
    ~ShortcutRecorder();
    ShortcutRecorder(const ShortcutRecorder&) = delete;
    ShortcutRecorder& operator=(const ShortcutRecorder&) = delete;

    const Name& shortcutName() const { return m_shortcutName; }
    /// Another name ends recording, soon.
    void setShortcutName(const Name& name);
    bool isRecording() const { return m_eventMonitor != nullptr; }

    // What the field reports.
    void becomeFirstResponder();
    void controlTextDidEndEditing();
    void controlTextDidChange();

private:
    void showStoredText();
    std::optional<Event> handle(const Event& event);
    std::optional<Event> handleKeyDown(const Event& event);
    void record(const Event& event);
    bool isRefused(const Shortcut& shortcut);
    void refuse(const std::string& message, const std::string& information);

    RecorderField& m_field;
    Name m_shortcutName;
    OnChange m_onChange;
    std::unique_ptr<LocalEventMonitor> m_eventMonitor; // while recording
    std::shared_ptr<bool> m_isAlive = std::make_shared<bool>(true);
    Observation m_observer;
};

} // namespace tavro::KeyboardShortcuts
