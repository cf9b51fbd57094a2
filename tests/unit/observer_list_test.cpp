#include "platform/process/NotificationCenter.h"
#include "platform/process/Published.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tavro {
namespace {

TEST(ObserverListTest, CallsObserversInOrderUntilTheyEnd) {
    ObserverList<int> list;
    std::string told;
    const auto first = list.add([&](int value) { told += "first" + std::to_string(value) + ' '; });
    {
        const auto second = list.add([&](int) { told += "second "; });
        list.tell(1);
    }
    list.tell(2);
    EXPECT_EQ(told, "first1 second first2 ");
}

TEST(ObserverListTest, MayBeChangedByItsObservers) {
    ObserverList<> list;
    std::string told;
    std::vector<Observation> observations(3);
    std::vector<Observation> added;
    observations[0] = list.add([&] {
        told += "self ";
        observations[0] = Observation();
    });
    observations[1] = list.add([&] {
        told += "other ";
        observations[2] = Observation();
        if (added.empty())
            added.push_back(list.add([&] { told += "added "; }));
    });
    observations[2] = list.add([&] { told += "ended "; });
    list.tell();
    EXPECT_EQ(told, "self other ");
    list.tell();
    EXPECT_EQ(told, "self other other added ");
}

TEST(ObserverListTest, MayBeDestroyedByAnObserver) {
    std::optional<ObserverList<>> list(std::in_place);
    std::string told;
    const auto first = list->add([&] {
        told += "first ";
        list.reset();
    });
    const auto second = list->add([&] { told += "second "; });
    list->tell();
    EXPECT_EQ(told, "first second ");
    // Both observations now end after the list that they belonged to.
}

TEST(ObserverListTest, AnObservationEndsOnceWhenItIsMovedOrReplaced) {
    ObserverList<> list;
    int told = 0;
    auto observation = list.add([&] { ++told; });
    auto moved = std::move(observation);
    list.tell();
    EXPECT_EQ(told, 1);
    moved = list.add([&] { told += 10; });
    list.tell();
    EXPECT_EQ(told, 11);
}

TEST(PublishedTest, NotifiesBeforeStoringEvenAnEqualValue) {
    Published<std::string> field("old");
    std::vector<std::string> seen;
    const auto observation = field.willChange([&] { seen.push_back(field.get()); });
    field.set("new");
    field.set("new");
    EXPECT_EQ(seen, (std::vector<std::string>{"old", "new"}));
    EXPECT_EQ(field.get(), "new");
}

TEST(NotificationCenterTest, DeliversByNameBeforePostReturns) {
    NotificationCenter center;
    std::string told;
    center.post("nobody listens");
    const auto first = center.addObserver("first", [&] {
        told += "first ";
        center.post("second");
    });
    const auto second = center.addObserver("second", [&] { told += "second "; });
    center.post("first");
    EXPECT_EQ(told, "first second ");
}

} // namespace
} // namespace tavro
