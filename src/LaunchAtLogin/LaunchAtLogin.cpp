#include "LaunchAtLogin/LaunchAtLogin.h"

#include "platform/process/Bundle.h"
#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/AppService.h"
#include "platform/storage/LegacyLoginItems.h"

#include <algorithm>

namespace tavro {

namespace {

constexpr Logger logger{"com.vantrelo.LaunchAtLogin", "main"};

// From this generation on the system keeps login items itself; before it, a helper inside the bundle did.
bool hasService() {
    return machine().systemVersion() >= SystemVersion{13, 0};
}

struct Subject {
    CurrentValueSubject<bool> values{LaunchAtLogin::isEnabled()};
};

CurrentValueSubject<bool>& subject() {
    return Process::current().shared<Subject>().values;
}

bool isEnabledService() {
    return machine().appService().status() == AppService::Status::enabled;
}

// Registering what is registered already is refused where the entry was changed elsewhere meanwhile, so it is
// taken out before.
void setService(bool isEnabled) {
    auto& service = machine().appService();
    if (isEnabled && isEnabledService())
        static_cast<void>(service.unregisterService()); // an error here says nothing about the next step
    if (const auto error = isEnabled ? service.registerService() : service.unregisterService())
        machine().log().error(logger, std::string("Failed to ") + (isEnabled ? "enable" : "disable") +
                                          " launch at login: " + *error);
}

template <class T>
const T* valueAt(const PropertyList& job, const char* key) {
    const auto* dictionary = job.as<PropertyList::Dictionary>();
    const auto entry = dictionary->find(key);
    return entry == dictionary->end() ? nullptr : entry->second.as<T>();
}

bool isEnabledHelper() {
    auto* items = machine().legacyLoginItems();
    const auto jobs =
        (items ? items->copyAllJobDictionaries() : std::nullopt).value_or(PropertyList::Array());
    const auto isDictionary = [](const auto& job) { return job.template as<PropertyList::Dictionary>(); };
    if (!std::ranges::all_of(jobs, isDictionary))
        return false;
    const auto helper = std::ranges::find_if(jobs, [](const auto& job) {
        const auto* label = valueAt<std::string>(job, "Label");
        return label && *label == LaunchAtLogin::helperBundleIdentifier();
    });
    const auto* onDemand = helper == jobs.end() ? nullptr : valueAt<bool>(*helper, "OnDemand");
    return onDemand && *onDemand;
}

} // namespace

bool LaunchAtLogin::isEnabled() {
    return hasService() ? isEnabledService() : isEnabledHelper();
}

void LaunchAtLogin::setIsEnabled(bool isEnabled) {
    observable().objectWillChange.notify();
    kvo().m_willChange.notify();
    if (hasService())
        setService(isEnabled);
    else if (auto* items = machine().legacyLoginItems())
        items->setEnabled(helperBundleIdentifier(), isEnabled);
    kvo().m_didChange.notify();
    subject().send(isEnabled);
}

LaunchAtLogin::Observable& LaunchAtLogin::observable() {
    return Process::current().shared<Observable>();
}

LaunchAtLogin::KVO& LaunchAtLogin::kvo() {
    return Process::current().shared<KVO>();
}

Publisher<bool>& LaunchAtLogin::publisher() {
    return subject();
}

std::string LaunchAtLogin::helperBundleIdentifier() {
    return machine().mainBundle().bundleIdentifier + "-LaunchAtLoginHelper";
}

} // namespace tavro
