#pragma once

#include "Rig.h"

#include "platform/UserDefaults.h"

#include <limits>

namespace tavro {

template <Rig R>
class UserDefaultsContract : public Contract<R> {
protected:
    UserDefaults& defaults() { return this->machine().userDefaults(); }
    static PropertyList::Dictionary valuesOfEveryType() {
        return {
            {"true", true},
            {"false", false},
            {"integer", 42},
            {"smallest integer", std::numeric_limits<std::int64_t>::min()},
            {"largest integer", std::numeric_limits<std::int64_t>::max()},
            {"one, not true", 1},
            {"real", -0.1},
            {"whole real", 2.0},
            {"large real", 1.5e300},
            {"text", "a <b> & \"c\"\n\xc3\xbc"},
            {"empty text", ""},
            {"data", PropertyList::Data{0, 255, 10, 0}},
            {"empty data", PropertyList::Data{}},
            {"date", PropertyList::Date{700000000}},
            {"early date", PropertyList::Date{-86400}},
            {"array", PropertyList::Array{1, "two", false, PropertyList::Array{}}},
            {"dictionary", PropertyList::Dictionary{{"a key", PropertyList::Dictionary{{"", 1.5}}}}},
        };
    }
};

TYPED_TEST_SUITE_P(UserDefaultsContract);

TYPED_TEST_P(UserDefaultsContract, ReadsSeeEarlierWritesAtOnce) {
    auto& defaults = this->defaults();
    EXPECT_EQ(defaults.object("key"), std::nullopt);
    EXPECT_FALSE(defaults.boolForKey("key"));
    defaults.setObject("key", true);
    EXPECT_EQ(defaults.object("key"), PropertyList(true));
    EXPECT_TRUE(defaults.boolForKey("key"));
    defaults.setObject("key", "another type");
    EXPECT_EQ(defaults.object("key"), PropertyList("another type"));
    defaults.removeObject("key");
    defaults.removeObject("key");
    EXPECT_EQ(defaults.object("key"), std::nullopt);
}

TYPED_TEST_P(UserDefaultsContract, EveryTypeSurvivesTheProcess) {
    const auto values = this->valuesOfEveryType();
    for (const auto& [key, value] : values)
        this->defaults().setObject(key, value);
    EXPECT_TRUE(this->defaults().synchronize());
    this->rig.relaunch();
    for (const auto& [key, value] : values) {
        SCOPED_TRACE(key);
        EXPECT_EQ(this->defaults().object(key), value);
    }
}

TYPED_TEST_P(UserDefaultsContract, WhatIsRemovedOrReplacedDoesNotComeBack) {
    this->defaults().setObject("removed", 1);
    this->defaults().setObject("replaced", 1);
    EXPECT_TRUE(this->defaults().synchronize());
    this->rig.relaunch();
    this->defaults().removeObject("removed");
    this->defaults().setObject("replaced", "new");
    EXPECT_TRUE(this->defaults().synchronize());
    this->rig.relaunch();
    EXPECT_EQ(this->defaults().object("removed"), std::nullopt);
    EXPECT_EQ(this->defaults().object("replaced"), PropertyList("new"));
}

TYPED_TEST_P(UserDefaultsContract, WritesReachTheDiskSoonWithoutBeingAsked) {
    this->defaults().setObject("key", 1);
    // Soon is: when the main thread was free once.
    bool wasFree = false;
    this->machine().mainQueue().async([&] { wasFree = true; });
    ASSERT_TRUE(this->waitUntil([&] { return wasFree; }));
    this->rig.relaunch();
    EXPECT_EQ(this->defaults().object("key"), PropertyList(1));
}

REGISTER_TYPED_TEST_SUITE_P(UserDefaultsContract, ReadsSeeEarlierWritesAtOnce, EveryTypeSurvivesTheProcess,
                            WhatIsRemovedOrReplacedDoesNotComeBack, WritesReachTheDiskSoonWithoutBeingAsked);

} // namespace tavro
