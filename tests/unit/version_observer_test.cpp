#include "support/machines/Launch.h"

#include "update/NumericOrder.h"
#include "update/VersionObserver.h"

#include <sstream>

namespace tavro {
namespace {

const std::string updated = "Version updated 2.9.3";
const std::string outdated = "Version outdate 2.9.3 > ";
const std::string error = "Check Version error ";

class VersionObserverTest : public SimulatedMacTest {
protected:
    std::string state() {
        const auto& observer = VersionObserver::shared();
        return std::string(observer.loading() ? "loading" : "done") +
               (observer.isUpdated() ? " updated" : "");
    }
};

TEST_F(VersionObserverTest, RecordDecidesWhetherTheVersionIsCurrent) {
    const struct {
        const char* what;
        std::optional<std::string> record;
        std::string line;
        const char* state = "done updated";
        PropertyList ours = "2.9.3";
    } cases[] = {
        {"newer", R"({"version": "2.10.0", "url": "HTTPS://AaZz09.example/-._~:?#[]@!$&'()*+,;=%"})",
         outdated + "2.10.0", "done"},
        {"equal", R"({"version": "2.9.3"})", updated},
        {"no members", "{}", updated},
        {"null members", R"({"version": null, "url": null})", updated},
        {"other members", R"({"notes": [1e3, {}], "version": "3"})", outdated + "3", "done"},
        {"control characters", R"({"version": "9\n\u007fTurn On"})", outdated + "9  Turn On", "done"},
        {"our version is no text", R"({"version": "0.0.1"})", "Version outdate 0.0.0 > 0.0.1", "done", 3},
        {"not JSON", "<html>", error + "not JSON, at byte 1"},
        {"empty", "", error + "not JSON, at byte 1"},
        {"an array", R"(["9"])", error + "not an object"},
        {"a number as version", R"({"version": 9})", error + "\"version\" is not a string"},
        {"a list as address", R"({"version": "9", "url": []})", error + "\"url\" is not a string"},
        {"an address with a space", R"({"version": "9", "url": "over there"})",
         error + "\"url\" is not a URL"},
        {"an address with a brace", R"({"version": "9", "url": "https://{host}"})",
         error + "\"url\" is not a URL"},
        {"an empty address", R"({"version": "9", "url": ""})", error + "\"url\" is not a URL"},
        {"a huge number", R"({"size": 1e999})", error + "a number beyond all bounds"},
        {"deeply nested", std::string(60000, '['), error + "not JSON, at byte 60001"},
        {"no data", std::nullopt, "", "loading"},
    };
    for (const auto& [what, record, line, expected, ours] : cases) {
        SCOPED_TRACE(what);
        SimulatedMac other;
        other.bundle.infoDictionary = {{"CFBundleShortVersionString", ours}};
        const Launch launch(other);
        EXPECT_EQ(state(), "loading");
        other.urlSession()->answer(record);
        EXPECT_EQ(state(), "loading");
        other.mainQueue().runUntilIdle();
        EXPECT_EQ(state(), expected);
        EXPECT_EQ(other.log().printed(), line.empty() ? Lines{} : Lines{line});
    }
}

TEST_F(VersionObserverTest, AsksOncePerLaunchUnlessOffline) {
    for (const bool isOffline : {false, true}) {
        mac.isOffline = isOffline;
        const Launch launch(mac);
        EXPECT_EQ(mac.journal().lines("urlSession").size(), 1u);
        EXPECT_EQ(state(), "loading");
    }
}

TEST(NumericOrderTest, ComparesDigitsByValueAndTheRestByCharacter) {
    std::vector<std::string> ascending{""};
    std::istringstream texts("0 0.9 1 1.0 1.0.1 1.9 1.9b 1.10 2.9.3 2.10.0 10 99999999999999999999 "
                             "100000000000000000000 a a2 a10 v1 \xc3\xa9");
    for (std::string text; texts >> text;)
        ascending.push_back(text);
    for (std::size_t left = 0; left < std::size(ascending); ++left)
        for (std::size_t right = 0; right < std::size(ascending); ++right)
            EXPECT_TRUE(compareNumerically(ascending[left], ascending[right]) == (left <=> right))
                << ascending[left] << " and " << ascending[right];
    for (const auto* zeros : {"1.09", "01.9", "001.009"})
        EXPECT_TRUE(compareNumerically(zeros, "1.9") == 0) << zeros;
}

} // namespace
} // namespace tavro
