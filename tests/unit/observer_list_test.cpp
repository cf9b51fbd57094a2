#include "platform/process/Published.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tavro {
namespace {

TEST(ObserverListTest, CallsObserversInOrderUntilTheyEndOnce) {
    ObserverList<int> list;
    std::string calls;
    auto first = list.add([&](int value) { calls += "first" + std::to_string(value) + ' '; });
    {
        const auto second = list.add([&](int) { calls += "second "; });
        list.notify(1);
    }
    auto moved = std::move(first);
    list.notify(2);
    moved = list.add([&](int) { calls += "new "; });
    list.notify(3);
    EXPECT_EQ(calls, "first1 second first2 new ");
}

TEST(ObserverListTest, MayBeChangedByItsObservers) {
    ObserverList<> list;
    std::string calls;
    std::vector<Observation> observations(3);
    std::vector<Observation> added;
    observations[0] = list.add([&] {
        calls += "self ";
        observations[0] = Observation();
    });
    observations[1] = list.add([&] {
        calls += "other ";
        observations[2] = Observation();
        if (added.empty())
            added.push_back(list.add([&] { calls += "added "; }));
    });
    observations[2] = list.add([&] { calls += "ended "; });
    list.notify();
    EXPECT_EQ(calls, "self other ");
    list.notify();
    EXPECT_EQ(calls, "self other other added ");
}

TEST(ObserverListTest, MayBeDestroyedByAnObserver) {
    std::optional<ObserverList<>> list(std::in_place);
    std::string calls;
    const auto first = list->add([&] {
        calls += "first ";
        list.reset();
    });
    const auto second = list->add([&] { calls += "second "; });
    list->notify();
    EXPECT_EQ(calls, "first second ");
    // Both observations now end after the list that they belonged to.
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

} // namespace
} // namespace tavro
