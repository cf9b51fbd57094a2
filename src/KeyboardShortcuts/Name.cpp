#include "KeyboardShortcuts/Name.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/UserDefaults.h"

namespace tavro::KeyboardShortcuts {

Name::Name(std::string rawValue, std::optional<Shortcut> defaultShortcut)
    : m_rawValue(std::move(rawValue))
    , m_defaultShortcut(std::move(defaultShortcut)) {
    if (m_defaultShortcut && !Process::current().machine().userDefaults().object(key()))
        setShortcut(m_defaultShortcut, *this);
}

} // namespace tavro::KeyboardShortcuts
