#include "support/TestMachine.h"

namespace tavro {
namespace {

class MainQueueContract : public Contract {
protected:
    using Duration = MainQueue::Duration;
    MainQueue& queue() { return machine().mainQueue(); }
};

TEST_F(MainQueueContract, BlocksRunOneByOneAndNeverInsideTheCallThatQueuesThem) {
    std::string order;
    queue().async([&] {
        order += "first ";
        queue().async([&] { order += "queued "; });
        order += "ends ";
    });
    queue().async([&] { order += "second "; });
    EXPECT_EQ(order, "");
    EXPECT_TRUE(waitUntil([&] { return order == "first ends second queued "; })) << order;
}

TEST_F(MainQueueContract, DelaysOrderTheBlocksAndNoneIsEarly) {
    std::string order;
    const auto start = testMachine->now();
    const auto add = [&](const char* name, Duration delay) {
        queue().asyncAfter(delay, [&, name, delay] {
            order += name;
            EXPECT_GE(testMachine->now() - start, delay) << name;
        });
    };
    add("late ", Duration(0.3));
    add("early ", Duration(0.05));
    add("middle ", Duration(0.15));
    queue().async([&] { order += "now "; });
    EXPECT_EQ(order, "");
    EXPECT_TRUE(waitUntil([&] { return order == "now early middle late "; })) << order;
}

} // namespace
} // namespace tavro
