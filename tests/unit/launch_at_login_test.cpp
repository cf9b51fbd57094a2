#include "support/Launch.h"

#include "LaunchAtLogin/LaunchAtLogin.h"

#include <gtest/gtest.h>

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
    const Fault none, busy = "busy", notPermitted = "not permitted";
    const struct {
        const char* what;
        Status status;
        bool value;
        Fault registerError, unregisterError;
        Lines journal;
        bool isEnabled;
    } cases[] = {
        {"on", Status::notRegistered, true, none, none, {on}, true},
        {"on again, of which the first half fails", Status::enabled, true, none, busy, {off, on}, true},
        {"on, switched off elsewhere", Status::requiresApproval, true, none, none, {on}, true},
        {"on, refused",
         Status::notFound,
         true,
         notPermitted,
         none,
         {on, failure + "enable launch at login: not permitted"},
         false},
        {"off", Status::enabled, false, none, none, {off}, false},
        {"off, refused",
         Status::enabled,
         false,
         none,
         busy,
         {off, failure + "disable launch at login: busy"},
         true},
    };
    for (const auto& [what, status, value, registerError, unregisterError, journal, isEnabled] : cases) {
        SCOPED_TRACE(what);
        SimulatedMac mac(withService);
        const Process process(mac);
        mac.appService().userSets(status);
        EXPECT_EQ(LaunchAtLogin::isEnabled(), status == Status::enabled);
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
        {"others", PropertyList::Array{job("com.vantrelo.TavroPRO", true)}, false},
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
    for (const auto version : {before, withService}) {
        SCOPED_TRACE(version.major);
        SimulatedMac mac(version);
        const Process process(mac);
        mac.appService().registerError = "no";
        if (auto* items = mac.legacyLoginItems())
            items->refuses = true;
        auto& journal = mac.journal();
        const auto views =
            LaunchAtLogin::observable().willChange([&] { journal.record("objectWillChange"); });
        const auto will = LaunchAtLogin::kvo().willChangeIsEnabled([&] { journal.record("willChange"); });
        const auto did = LaunchAtLogin::kvo().didChangeIsEnabled([&] { journal.record("didChange"); });
        const auto values =
            LaunchAtLogin::publisher().sink([&](bool value) { journal.record("value", value); });
        LaunchAtLogin::Toggle().launchAtLogin.setIsEnabled(true);
        auto lines = journal.lines();
        std::erase_if(lines, [](const auto& line) { return line.starts_with("log."); });
        EXPECT_EQ(lines, (Lines{"value false", "objectWillChange", "willChange",
                                version == before ? "legacyLoginItems.setEnabled " + helper + " true"
                                                  : "appService.register",
                                "didChange", "value true"}));
        EXPECT_FALSE(LaunchAtLogin::isEnabled());
    }
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
