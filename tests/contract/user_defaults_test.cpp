#include "support/machines/TestMachine.h"

#include "platform/storage/UserDefaults.h"

#include <limits>

namespace tavro {
namespace {

class UserDefaultsContract : public Contract {
protected:
    UserDefaults& defaults() { return machine().userDefaults(); }
};

TEST_F(UserDefaultsContract, ReadsSeeEarlierWritesAtOnce) {
    EXPECT_EQ(defaults().object("key"), std::nullopt);
    EXPECT_FALSE(defaults().boolForKey("key"));
    defaults().setObject("key", true);
    EXPECT_EQ(defaults().object("key"), PropertyList(true));
    EXPECT_TRUE(defaults().boolForKey("key"));
    defaults().setObject("key", "another type");
    EXPECT_EQ(defaults().object("key"), PropertyList("another type"));
    defaults().removeObject("key");
    defaults().removeObject("key");
    EXPECT_EQ(defaults().object("key"), std::nullopt);
}

TEST_F(UserDefaultsContract, WhatIsWrittenSurvivesTheProcessAndWhatIsRemovedDoesNot) {
    const PropertyList::Dictionary values{
        {"true", true},
        {"one, not true", 1},
        {"largest integer", std::numeric_limits<std::int64_t>::max()},
        {"real", -0.1},
        {"whole real", 2.0},
        {"text", "a <b> & \"c\"\n\xc3\xbc"},
        {"data", PropertyList::Data{0, 255, 10, 0}},
        {"date", PropertyList::Date{-86400}},
        {"array", PropertyList::Array{1, "two", false, PropertyList::Array{}}},
        {"dictionary", PropertyList::Dictionary{{"a key", PropertyList::Dictionary{{"", 1.5}}}}},
    };
    for (const auto& [key, value] : values)
        defaults().setObject(key, "replaced");
    defaults().setObject("removed", 1);
    EXPECT_TRUE(defaults().synchronize());
    testMachine->relaunch();
    for (const auto& [key, value] : values)
        defaults().setObject(key, value);
    defaults().removeObject("removed");
    EXPECT_TRUE(defaults().synchronize());
    testMachine->relaunch();
    for (const auto& [key, value] : values)
        EXPECT_EQ(defaults().object(key), value) << key;
    EXPECT_EQ(defaults().object("removed"), std::nullopt);
}

TEST_F(UserDefaultsContract, WritesReachTheDiskSoonWithoutBeingAsked) {
    defaults().setObject("key", 1);
    // Soon is: when the main thread was free once.
    bool wasFree = false;
    machine().mainQueue().async([&] { wasFree = true; });
    ASSERT_TRUE(waitUntil([&] { return wasFree; }));
    testMachine->relaunch();
    EXPECT_EQ(defaults().object("key"), PropertyList(1));
}

} // namespace
} // namespace tavro
