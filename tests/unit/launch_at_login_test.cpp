#include "support/Launch.h"

#include "LaunchAtLogin/LaunchAtLogin.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

constexpr SystemVersion withService{13, 0};
constexpr SystemVersion before{12, 6};
constexpr const char* helper = "com.vantrelo.TavroPRO-LaunchAtLoginHelper";
constexpr const char* failure = "log.error com.vantrelo.LaunchAtLogin main Failed to ";

using Status = AppService::Status;

TEST(LaunchAtLoginTest, TheServiceIsAskedAnewAndOnlyEnabledCounts) {
    SimulatedMac mac(withService);
    const Process process(mac);
    for (const auto status :
         {Status::notRegistered, Status::enabled, Status::requiresApproval, Status::notFound}) {
        mac.appService().userSets(status);
        EXPECT_EQ(LaunchAtLogin::isEnabled(), status == Status::enabled);
        EXPECT_EQ(LaunchAtLogin::observable().isEnabled(), status == Status::enabled);
        EXPECT_EQ(LaunchAtLogin::kvo().isEnabled(), status == Status::enabled);
    }
}

TEST(LaunchAtLoginTest, SettingGoesThroughTheService) {
    using Fault = std::optional<std::string>;
    const Lines on{"appService.register"}, off{"appService.unregister"}, both{off[0], on[0]};
    const Lines onRefused{on[0], std::string(failure) + "enable launch at login: not permitted"};
    const Lines offRefused{off[0], std::string(failure) + "disable launch at login: busy"};
    const Fault none, busy = "busy", notPermitted = "not permitted";
    const struct {
        const char* what;
        Status status;
        bool value;
        Fault registerError, unregisterError;
        Lines journal;
        bool isEnabled;
    } cases[] = {
        {"on", Status::notRegistered, true, none, none, on, true},
        {"on again", Status::enabled, true, none, none, both, true},
        {"on again, of which the first half fails", Status::enabled, true, none, busy, both, true},
        {"on, switched off elsewhere", Status::requiresApproval, true, none, none, on, true},
        {"on, refused", Status::notRegistered, true, notPermitted, none, onRefused, false},
        {"off", Status::enabled, false, none, none, off, false},
        {"off again", Status::notRegistered, false, none, none, off, false},
        {"off, refused", Status::enabled, false, none, busy, offRefused, true},
    };
    for (const auto& [what, status, value, registerError, unregisterError, journal, isEnabled] : cases) {
        SCOPED_TRACE(what);
        SimulatedMac mac(withService);
        const Process process(mac);
        mac.appService().userSets(status);
        mac.appService().registerError = registerError;
        mac.appService().unregisterError = unregisterError;
        std::vector<bool> values;
        const auto observation = LaunchAtLogin::publisher().sink([&](bool sent) { values.push_back(sent); });
        LaunchAtLogin::setIsEnabled(value);
        EXPECT_EQ(mac.journal().lines(), journal);
        EXPECT_EQ(LaunchAtLogin::isEnabled(), isEnabled);
        EXPECT_EQ(values, (std::vector{status == Status::enabled, value}));
    }
}

TEST(LaunchAtLoginTest, BeforeTheServiceTheHelpersJobTells) {
    const auto job = [](PropertyList label, PropertyList onDemand) {
        return PropertyList::Dictionary{{"Label", std::move(label)}, {"OnDemand", std::move(onDemand)}};
    };
    const struct {
        const char* what;
        std::optional<PropertyList::Array> jobs;
        bool isEnabled;
    } cases[] = {
        {"on demand", PropertyList::Array{job("other", false), job(helper, true)}, true},
        {"not on demand", PropertyList::Array{job("other", true), job(helper, false)}, false},
        {"the first of two", PropertyList::Array{job(helper, false), job(helper, true)}, false},
        {"no Boolean", PropertyList::Array{job(helper, "yes")}, false},
        {"nothing said", PropertyList::Array{PropertyList::Dictionary{{"Label", helper}}}, false},
        {"a label that is no text", PropertyList::Array{job(1, true), job(helper, true)}, true},
        {"others", PropertyList::Array{job("com.vantrelo.TavroPRO", true)}, false},
        {"an entry that is no dictionary", PropertyList::Array{job(helper, true), "job"}, false},
        {"none", PropertyList::Array{}, false},
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

TEST(LaunchAtLoginTest, BeforeTheServiceTheHelperIsEnabledWhateverTheSystemAnswers) {
    for (const bool refuses : {false, true}) {
        SimulatedMac mac(before);
        const Process process(mac);
        mac.legacyLoginItems()->refuses = refuses;
        LaunchAtLogin::setIsEnabled(true);
        EXPECT_EQ(LaunchAtLogin::isEnabled(), !refuses);
        LaunchAtLogin::setIsEnabled(false);
        EXPECT_FALSE(LaunchAtLogin::isEnabled());
        EXPECT_EQ(mac.journal().lines(),
                  (Lines{std::string("legacyLoginItems.setEnabled ") + helper + " true",
                         std::string("legacyLoginItems.setEnabled ") + helper + " false"}));
    }
}

TEST(LaunchAtLoginTest, ObserversAreToldInOrderAlsoOfWhatIsRefused) {
    for (const auto version : {before, withService})
        for (const bool refuses : {false, true}) {
            SCOPED_TRACE(testing::Message() << version.major << (refuses ? " refuses" : ""));
            SimulatedMac mac(version);
            const Process process(mac);
            if (refuses)
                mac.appService().registerError = "no";
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
                                    version == before
                                        ? std::string("legacyLoginItems.setEnabled ") + helper + " true"
                                        : "appService.register",
                                    "didChange", "value true"}));
        }
}

TEST(LaunchAtLoginTest, TheSwitchHasItsLabel) {
    SimulatedMac mac;
    const Process process(mac);
    EXPECT_EQ(LaunchAtLogin::Toggle().label, "Launch at login");
    EXPECT_EQ(LaunchAtLogin::Toggle("Start").label, "Start");
}

TEST(LaunchAtLoginTest, OnlyTheVeryFirstLaunchSwitchesItOn) {
    SimulatedMac mac;
    { const Launch launch(mac); }
    EXPECT_EQ(mac.appService().status(), Status::enabled);
    mac.appService().userSets(Status::notRegistered);
    { const Launch launch(mac); }
    EXPECT_EQ(mac.appService().status(), Status::notRegistered);
    EXPECT_EQ(mac.journal().lines("appService"), Lines{"appService.register"});
}

} // namespace
} // namespace tavro
