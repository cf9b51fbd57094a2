#include "Launch.h"

#include "update/NumericOrder.h"
#include "update/VersionObserver.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

class VersionObserverTest : public SimulatedMacTest {
protected:
    std::string state() {
        const auto& observer = VersionObserver::shared();
        return std::string(observer.loading() ? "loading" : "done") +
               (observer.isUpdated() ? " updated" : "");
    }
};

TEST_F(VersionObserverTest, TheRecordDecidesAndTheFieldsChangeOnTheMainQueue) {
    const PropertyList::Dictionary running{{"CFBundleShortVersionString", "2.9.3"}};
    const struct {
        const char* what;
        std::optional<std::string> record;
        PropertyList::Dictionary info;
        const char* line;
        const char* state;
    } cases[] = {
        {"newer", R"({"version": "2.10.0", "url": "https://example.com/a.zip"})", running,
         "Version outdate 2.9.3 > 2.10.0", "done"},
        {"equal", R"({"version": "2.9.3"})", running, "Version updated 2.9.3", "done updated"},
        {"older", R"({"version": "2.9"})", running, "Version updated 2.9.3", "done updated"},
        {"no members", "{}", running, "Version updated 2.9.3", "done updated"},
        {"null members", R"({"version": null, "url": null})", running, "Version updated 2.9.3",
         "done updated"},
        {"other members", R"({"notes": [1e3, {}], "version": "3"})", running, "Version outdate 2.9.3 > 3",
         "done"},
        {"line feeds", R"({"version": "9\nTurn On"})", running, "Version outdate 2.9.3 > 9 Turn On", "done"},
        {"nothing of ourselves", R"({"version": "0.0.1"})", {}, "Version outdate 0.0.0 > 0.0.1", "done"},
        {"our version is no text",
         R"({"version": "0.0"})",
         {{"CFBundleShortVersionString", 3}},
         "Version updated 0.0.0",
         "done updated"},
        {"not JSON", "<html>", running, "Check Version error not JSON, at byte 1", "done updated"},
        {"empty", "", running, "Check Version error not JSON, at byte 1", "done updated"},
        {"cut off", R"({"version": "9)", running, "Check Version error not JSON, at byte 15", "done updated"},
        {"not UTF-8", "{\"version\": \"\xff\"}", running, "Check Version error not JSON, at byte 14",
         "done updated"},
        {"an array", R"(["9"])", running, "Check Version error not an object", "done updated"},
        {"a number as version", R"({"version": 9})", running,
         "Check Version error \"version\" is not a string", "done updated"},
        {"a list as address", R"({"version": "9", "url": []})", running,
         "Check Version error \"url\" is not a string", "done updated"},
        {"no address", R"({"version": "9", "url": "over there"})", running,
         "Check Version error \"url\" is not a URL", "done updated"},
        {"a huge number", R"({"size": 1e999})", running, "Check Version error a number beyond all bounds",
         "done updated"},
        {"deeply nested", std::string(60000, '['), running, "Check Version error not JSON, at byte 60001",
         "done updated"},
        {"no data", std::nullopt, running, nullptr, "loading"},
    };
    for (const auto& [what, record, info, line, expected] : cases) {
        SCOPED_TRACE(what);
        SimulatedMac other;
        other.bundle.infoDictionary = info;
        const Launch launch(other);
        EXPECT_EQ(state(), "loading");
        other.urlSession()->answer(record);
        EXPECT_EQ(state(), "loading");
        other.mainQueue().runUntilIdle();
        EXPECT_EQ(state(), expected);
        EXPECT_EQ(other.log().printed(), line ? Lines{line} : Lines{});
    }
}

TEST_F(VersionObserverTest, EachLaunchAsksOnce) {
    for (int launches = 1; launches <= 2; ++launches) {
        const Launch launch(mac);
        const auto requests = mac.journal().lines("urlSession");
        ASSERT_EQ(requests.size(), static_cast<std::size_t>(launches));
        EXPECT_TRUE(requests.back().starts_with("urlSession.dataTask https://"));
        EXPECT_TRUE(requests.back().ends_with("/releases/version.json"));
    }
}

TEST_F(VersionObserverTest, AMachineThatAsksNothingOfTheNetworkStaysWithoutAnOutcome) {
    mac.isOffline = true;
    const Launch launch(mac);
    EXPECT_EQ(state(), "loading");
}

TEST_F(VersionObserverTest, ObserversAreToldBeforeEachField) {
    const Launch launch(mac);
    Lines seen;
    const auto observations = VersionObserver::shared().willChange([&] { seen.push_back(state()); });
    mac.urlSession()->answer("{}");
    mac.mainQueue().runUntilIdle();
    EXPECT_EQ(seen, (Lines{"loading", "loading updated"}));
}

TEST(NumericOrderTest, DigitsCompareByValueAndAllElseByCharacter) {
    // Each comes before those in later rows; those of one row are equal.
    const std::vector<Lines> rows{
        {""},
        {"0", "00"},
        {"0.9"},
        {"1", "01"},
        {"1.0", "1.00"},
        {"1.0.1"},
        {"1.9", "1.09", "01.9"},
        {"1.9b"},
        {"1.10"},
        {"2.9.3"},
        {"2.10.0"},
        {"10"},
        {"99999999999999999999", "0099999999999999999999"},
        {"100000000000000000000"},
        {"a"},
        {"a2"},
        {"a10"},
        {"v1"},
        {"\xc3\xa9"},
    };
    for (std::size_t left = 0; left < rows.size(); ++left)
        for (std::size_t right = 0; right < rows.size(); ++right)
            for (const auto& a : rows[left])
                for (const auto& b : rows[right])
                    EXPECT_TRUE(compareNumerically(a, b) == (left <=> right)) << a << " and " << b;
}

} // namespace
} // namespace tavro
