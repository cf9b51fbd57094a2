#include "settings/UserSettings.h"

#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/UserDefaults.h"
#include "settings/Constants.h"

namespace tavro {

namespace {
UserDefaults& userDefaults() {
    return machine().userDefaults();
}
} // namespace

UserSettings& UserSettings::shared() {
    return Process::current().shared<UserSettings>();
}

// Every option is stored at once, also one that the user has not touched: whoever opens the file finds it.
UserSettings::UserSettings()
    : m_options({})
    , m_tavroIsOn(userDefaults().boolForKey(Constants::tavroKey)) {
    for (const auto& entry : Constants::optionCatalogue) {
        const auto stored = userDefaults().object(entry.id);
        const bool isOn = stored ? stored->boolValue() : entry.defaultIsOn;
        userDefaults().setObject(entry.id, isOn);
        auto options = m_options.get();
        options.push_back({entry.id, entry.name, isOn});
        setOptions(std::move(options));
    }
}

void UserSettings::setOptions(std::vector<OptionItem> options) {
    m_options.set(std::move(options));
    for (const auto& option : m_options.get())
        userDefaults().setObject(option.id, option.isOn);
}

void UserSettings::setOptionIsOn(std::size_t index, bool isOn) {
    if (index >= options().size())
        return;
    auto options = m_options.get();
    options[index].isOn = isOn;
    setOptions(std::move(options));
}

void UserSettings::setTavroIsOn(bool isOn) {
    m_tavroIsOn.set(isOn);
    userDefaults().setObject(Constants::tavroKey, isOn);
}

std::vector<Observation> UserSettings::willChange(const std::function<void()>& observer) {
    std::vector<Observation> observations;
    observations.push_back(m_options.willChange(observer));
    observations.push_back(m_tavroIsOn.willChange(observer));
    return observations;
}

} // namespace tavro
