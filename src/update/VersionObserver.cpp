#include "update/VersionObserver.h"

#include "platform/process/Bundle.h"
#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/MainQueue.h"
#include "platform/process/Process.h"
#include "platform/storage/URLSession.h"
#include "settings/Constants.h"
#include "update/AppVersion.h"
#include "update/NumericOrder.h"

#include <algorithm>

namespace tavro {

namespace {

constexpr const char* noVersion = "0.0.0";

std::string runningVersion() {
    const auto& dictionary = machine().mainBundle().infoDictionary;
    const auto entry = dictionary.find("CFBundleShortVersionString");
    const auto* version = entry == dictionary.end() ? nullptr : entry->second.as<std::string>();
    return version ? *version : noVersion;
}

/// What somebody else wrote may end no line of the log.
std::string onOneLine(std::string text) {
    std::ranges::replace_if(
        text, [](unsigned char character) { return character < ' ' || character == 0x7f; }, ' ');
    return text;
}

} // namespace

VersionObserver& VersionObserver::shared() {
    return Process::current().shared<VersionObserver>();
}

void VersionObserver::checkVersion() {
    if (auto* session = machine().urlSession())
        session->dataTask(Constants::versionRecordURL, [this](const std::optional<std::string>& data) {
            if (data)
                finish(*data);
        });
}

// On the session's queue; views must see the fields change on the main one.
void VersionObserver::finish(const std::string& data) {
    const auto record = AppVersion::decode(data);
    if (!record) {
        machine().log().print("Check Version error " + record.error().description);
        return machine().mainQueue().async([this] { publish(true); });
    }
    const auto remote = record->version.value_or(noVersion);
    const auto running = runningVersion();
    const bool isOutdated = compareNumerically(remote, running) > 0;
    machine().mainQueue().async([=, this] {
        machine().log().print(isOutdated ? "Version outdate " + running + " > " + onOneLine(remote)
                                         : "Version updated " + running);
        publish(!isOutdated);
    });
}

void VersionObserver::publish(bool isUpdated) {
    m_isUpdated.set(isUpdated);
    m_loading.set(false);
}

std::vector<Observation> VersionObserver::willChange(const std::function<void()>& observer) {
    std::vector<Observation> observations;
    observations.push_back(m_isUpdated.willChange(observer));
    observations.push_back(m_loading.willChange(observer));
    return observations;
}

} // namespace tavro
