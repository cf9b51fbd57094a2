#include "support/machines/Launch.h"

#include "LaunchAtLogin/LaunchAtLogin.h"

#include <tuple>

namespace tavro {
namespace {

constexpr SystemVersion withService{13, 0};
constexpr SystemVersion before{12, 6};
const std::string helper = "com.vantrelo.TavroPRO-LaunchAtLoginHelper";
const std::string failure = "log.error com.vantrelo.LaunchAtLogin main Failed to ";

using Status = AppService::Status;

TEST(LaunchAtLoginTest, ServiceIsRegisteredAndUnregistered) {
    using Fault = std::optional<std::string>;
    const std::string on = "appService.register", off = "appService.unregister";
    const Fault none, busy = "busy";
    const std::tuple<Status, bool, Fault, Fault, Lines, bool> cases[] = {
        {Status::notRegistered, true, none, none, {on}, true},
        {Status::requiresApproval, true, none, none, {on}, true}, // switched off elsewhere
        {Status::enabled, true, none, busy, {off, on}, true},     // of which the first half may fail
        {Status::notFound, true, busy, none, {on, failure + "enable launch at login: busy"}, false},
        {Status::enabled, false, none, none, {off}, false},
        {Status::enabled, false, none, busy, {off, failure + "disable launch at login: busy"}, true},
    };
    for (const auto& [status, value, registerError, unregisterError, journal, isEnabled] : cases) {
        SimulatedMac mac(withService);
        const Process process(mac);
        mac.appService().userSets(status);
        mac.appService().registerError = registerError;
        mac.appService().unregisterError = unregisterError;
        LaunchAtLogin::kvo().setIsEnabled(value);
        EXPECT_EQ(mac.journal().lines(), journal);
        EXPECT_EQ(LaunchAtLogin::observable().isEnabled(), isEnabled);
        EXPECT_EQ(LaunchAtLogin::kvo().isEnabled(), isEnabled);
    }
}

TEST(LaunchAtLoginTest, HelpersJobDecidesBeforeVersion13) {
    const auto job = [](PropertyList label, PropertyList onDemand) {
        return PropertyList::Dictionary{{"Label", std::move(label)}, {"OnDemand", std::move(onDemand)}};
    };
    const std::tuple<const char*, std::optional<PropertyList::Array>, bool> cases[] = {
        {"on demand", PropertyList::Array{job("other", false), job(1, false), job(helper, true)}, true},
        {"the first of two", PropertyList::Array{job(helper, false), job(helper, true)}, false},
        {"no Boolean", PropertyList::Array{job(helper, "yes")}, false},
        {"nothing said", PropertyList::Array{PropertyList::Dictionary{{"Label", helper}}}, false},
        {"an entry that is no dictionary", PropertyList::Array{job(helper, true), "job"}, false},
        {"no list", std::nullopt, false},
    };
    for (const auto& [what, jobs, isEnabled] : cases) {
        SCOPED_TRACE(what);
        SimulatedMac mac(before);
        const Process process(mac);
        mac.legacyLoginItems()->jobs = jobs;
        mac.appService().userSets(Status::enabled);
        EXPECT_EQ(LaunchAtLogin::isEnabled(), isEnabled);
    }
}

TEST(LaunchAtLoginTest, ObserversAreNotifiedInOrderEvenOnFailure) {
    SimulatedMac mac(withService);
    const Process process(mac);
    mac.appService().registerError = "no";
    auto& journal = mac.journal();
    const auto views = LaunchAtLogin::observable().willChange([&] { journal.record("objectWillChange"); });
    const auto will = LaunchAtLogin::kvo().willChangeIsEnabled([&] { journal.record("willChange"); });
    const auto did = LaunchAtLogin::kvo().didChangeIsEnabled([&] { journal.record("didChange"); });
    const auto values = LaunchAtLogin::publisher().sink([&](bool value) { journal.record("value", value); });
    LaunchAtLogin::Toggle().launchAtLogin.setIsEnabled(true);
    EXPECT_EQ(journal.lines(), (Lines{"value false", "objectWillChange", "willChange", "appService.register",
                                      failure + "enable launch at login: no", "didChange", "value true"}));
    EXPECT_FALSE(LaunchAtLogin::isEnabled());
}

TEST(LaunchAtLoginTest, VeryFirstLaunchEnablesIt) {
    for (const auto version : {before, withService}) {
        SCOPED_TRACE(version.major);
        SimulatedMac mac(version);
        for (const bool isEnabled : {true, false}) {
            const Launch launch(mac);
            EXPECT_EQ(LaunchAtLogin::isEnabled(), isEnabled);
            LaunchAtLogin::setIsEnabled(false);
        }
    }
}

} // namespace
} // namespace tavro
