#include "support/machines/TestMachine.h"

namespace tavro {
namespace {

class MainQueueContract : public Contract {
protected:
    using Duration = MainQueue::Duration;
    MainQueue& queue() { return machine().mainQueue(); }
};

TEST_F(MainQueueContract, BlocksRunOneByOneAndNeverInsideTheCallThatQueuesThem) {
    queue().async([&] {
        heard += "first ";
        queue().async([&] { heard += "queued "; });
        heard += "ends ";
    });
    queue().async([&] { heard += "second "; });
    EXPECT_EQ(heard, "");
    EXPECT_TRUE(hears("first ends second queued "));
}

TEST_F(MainQueueContract, DelaysOrderTheBlocksAndNoneIsEarly) {
    const auto start = testMachine->now();
    const auto add = [&](const char* name, Duration delay) {
        queue().asyncAfter(delay, [&, name, delay] {
            heard += name;
            EXPECT_GE(testMachine->now() - start, delay) << name;
        });
    };
    add("late ", Duration(0.3));
    add("early ", Duration(0.05));
    add("middle ", Duration(0.15));
    queue().async([&] { heard += "now "; });
    EXPECT_EQ(heard, "");
    EXPECT_TRUE(hears("now early middle late "));
}

} // namespace
} // namespace tavro
