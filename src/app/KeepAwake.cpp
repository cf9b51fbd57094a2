#include "app/KeepAwake.h"

#include "platform/process/DisplaySleep.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/UserDefaults.h"

namespace tavro {

void KeepAwake::begin() {
    const auto& defaults = machine().userDefaults();
    if (!defaults.object(key) || defaults.boolForKey(key))
        machine().displaySleep().prevent();
}

void KeepAwake::end() {
    machine().displaySleep().allow();
}

} // namespace tavro
