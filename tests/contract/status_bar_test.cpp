#include "support/machines/TestMachine.h"

#include "platform/menubar/StatusBar.h"
#include "platform/process/Application.h"

namespace tavro {
namespace {

class StatusBarContract : public Contract, public MenuDelegate {
protected:
    StatusBarContract() {
        menu->items = {{"Disabled", nullptr, ""}, {"Count", [this] { told += "chosen "; }, ""}};
        menu->delegate = this;
    }
    void menuDidClose(Menu& closed) override { told += &closed == menu.get() ? "closed " : "stranger "; }

    /// An item whose action writes down the event, for clicks of these types.
    std::shared_ptr<StatusItem> show(unsigned mask) {
        auto item = machine().statusBar().statusItem(StatusBar::variableLength);
        item->announceMenu(menu);
        item->button()->setImage(NamedImage{"menubar-off"});
        item->button()->sendActionOn(mask);
        item->button()->setAction([this] {
            const auto event = machine().application().currentEvent();
            told += event.type == EventType::rightMouseUp ? "right" : "left";
            told += event.modifierFlags & EventModifierFlags::option ? "+option " : " ";
        });
        EXPECT_TRUE(waitUntil([&] { return testMachine->hasStatusItem(); }));
        return item;
    }
    bool tells(const std::string& expected) {
        return waitUntil([&] { return told == expected; });
    }
    bool opensMenu() {
        return waitUntil([&] { return testMachine->menuIsOpen(); });
    }
    /// Right-clicks until the item hears of it: a panel that has not fetched the item's menu yet shows one of
    /// its own, and a user would close that and click again.
    bool rightClickReachesTheItem() {
        return waitUntil([&] {
            told.clear();
            testMachine->click(EventType::rightMouseUp);
            if (opensMenu() && testMachine->hasStatusItem() && !told.empty())
                return true;
            testMachine->closeMenu();
            return false;
        });
    }

    const std::shared_ptr<Menu> menu = std::make_shared<Menu>("Menu");
    std::string told;
    static constexpr unsigned left = eventMask(EventType::leftMouseUp);
    static constexpr unsigned right = eventMask(EventType::rightMouseUp);
};

TEST_F(StatusBarContract, ClicksSendTheActionWithTheirEventAlsoWithoutAPicture) {
    const auto item = show(left);
    testMachine->click(EventType::leftMouseUp);
    EXPECT_TRUE(tells("left ")) << told;
    testMachine->click(EventType::leftMouseUp, EventModifierFlags::option);
    EXPECT_TRUE(tells("left left+option ")) << told;
    EXPECT_EQ(machine().application().currentEvent().type, EventType::none);
    item->button()->setImage(std::nullopt);
    told.clear();
    testMachine->click(EventType::leftMouseUp);
    EXPECT_TRUE(tells("left ")) << told;
}

TEST_F(StatusBarContract, AnActionMayPopAMenuUpAndOtherClicksDoNotSendIt) {
    const auto item = show(right);
    item->button()->setAction([&, button = item->button()] {
        told += "right ";
        button->popUp(menu, {0, button->frame().size.height + 2});
    });
    testMachine->click(EventType::leftMouseUp);
    ASSERT_TRUE(rightClickReachesTheItem());
    EXPECT_TRUE(told.starts_with("right ")) << told;
    testMachine->closeMenu();
    EXPECT_TRUE(tells("right closed ")) << told;

    told.clear();
    testMachine->click(EventType::rightMouseUp);
    ASSERT_TRUE(opensMenu());
    testMachine->chooseLast();
    // The order of the two is the system's affair.
    EXPECT_TRUE(waitUntil([&] { return told == "right closed chosen " || told == "right chosen closed "; }))
        << told;
}

TEST_F(StatusBarContract, AnAttachedMenuTakesTheClick) {
    const auto item = show(left | right);
    item->setMenu(menu);
    testMachine->click(EventType::leftMouseUp);
    ASSERT_TRUE(opensMenu());
    testMachine->closeMenu();
    EXPECT_TRUE(tells("closed ")) << told;
    item->setMenu(nullptr);
    testMachine->click(EventType::leftMouseUp);
    EXPECT_TRUE(tells("closed left ")) << told;
}

TEST_F(StatusBarContract, DroppingAnItemRemovesIt) {
    auto item = show(left);
    item = nullptr;
    EXPECT_TRUE(waitUntil([&] { return !testMachine->hasStatusItem(); }));
}

} // namespace
} // namespace tavro
