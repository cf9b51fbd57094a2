#include "notifications/SilencingRecord.h"

#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/UserDefaults.h"

#include <string>

namespace tavro {

void SilencingRecord::begin(bool isOn) {
    machine().log().print(isOn ? "ENABLE" : "DISABLE");
}

void SilencingRecord::report(bool isEnabled) {
    const auto text = [](bool value) { return value ? "true" : "false"; };
    machine().log().print(std::string("isEnabled ") + text(isEnabled));
    machine().log().print(std::string("DNDfromTavro ") + text(isFromTavro()));
}

bool SilencingRecord::isFromTavro() {
    return machine().userDefaults().boolForKey(fromTavroKey);
}

void SilencingRecord::setFromTavro(bool isFromTavro) {
    machine().userDefaults().setObject(fromTavroKey, isFromTavro);
}

} // namespace tavro
