#include "notifications/MontereyDND.h"

#include "notifications/FocusDatabase.h"
#include "platform/process/Clock.h"
#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/Files.h"

namespace tavro {

namespace {

constexpr auto assertionsFile = "~/Library/DoNotDisturb/DB/Assertions.json";
constexpr auto configurationsFile = "~/Library/DoNotDisturb/DB/ModeConfigurations.json";

} // namespace

bool MontereyDND::isEnabled() {
    return enabledByAssertion() || enabledBySchedule();
}

bool MontereyDND::enabledByAssertion() {
    const auto assertions = readJSONData(assertionsFile);
    return assertions && FocusDatabase::hasAssertion(*assertions);
}

bool MontereyDND::enabledBySchedule() {
    const auto configurations = readJSONData(configurationsFile);
    if (!configurations)
        return false;
    const auto time = machine().systemServices().value().clock.localTime();
    return FocusDatabase::scheduleCovers(*configurations, time.hour * 60 + time.minute);
}

std::optional<nlohmann::json> MontereyDND::readJSONData(const std::string& path) {
    auto& log = machine().log();
    const auto& files = machine().systemServices().value().files;
    const auto file = files.expandingTilde(path);
    const auto bytes = files.contents(file);
    if (!bytes) {
        log.diagnose("Failed to open " + file.string() + ", error " + bytes.error().message());
        return std::nullopt;
    }
    auto parsed = FocusDatabase::parse(*bytes);
    if (!parsed) {
        log.diagnose("Failed to parse dict " + file.string() + ", error " + parsed.error());
        return std::nullopt;
    }
    return *parsed;
}

} // namespace tavro
