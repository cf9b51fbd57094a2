#pragma once

#include "Rig.h"

namespace tavro {

template <Rig R>
class MainQueueContract : public Contract<R> {
protected:
    using Duration = MainQueue::Duration;
    MainQueue& queue() { return this->machine().mainQueue(); }
};

TYPED_TEST_SUITE_P(MainQueueContract);

TYPED_TEST_P(MainQueueContract, BlocksRunOneByOneAndNeverInsideTheCallThatQueuesThem) {
    std::string order;
    this->queue().async([&] {
        order += "first ";
        this->queue().async([&] { order += "queued "; });
        order += "ends ";
    });
    this->queue().async([&] { order += "second "; });
    EXPECT_EQ(order, "");
    EXPECT_TRUE(this->waitUntil([&] { return order == "first ends second queued "; })) << order;
}

TYPED_TEST_P(MainQueueContract, DelaysOrderTheBlocksAndNoneIsEarly) {
    using Duration = MainQueue::Duration;
    std::string order;
    const auto start = this->rig.now();
    const auto add = [&](const char* name, Duration delay) {
        this->queue().asyncAfter(delay, [&, name, delay] {
            order += name;
            EXPECT_GE(this->rig.now() - start, delay) << name;
        });
    };
    add("late ", Duration(0.3));
    add("early ", Duration(0.05));
    add("middle ", Duration(0.15));
    this->queue().async([&] { order += "now "; });
    EXPECT_EQ(order, "");
    EXPECT_TRUE(this->waitUntil([&] { return order == "now early middle late "; })) << order;
}

REGISTER_TYPED_TEST_SUITE_P(MainQueueContract, BlocksRunOneByOneAndNeverInsideTheCallThatQueuesThem,
                            DelaysOrderTheBlocksAndNoneIsEarly);

} // namespace tavro
