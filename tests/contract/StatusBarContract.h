#pragma once

#include "Rig.h"

#include "platform/Application.h"
#include "platform/StatusBar.h"

namespace tavro {

template <Rig R>
class StatusBarContract : public Contract<R>, public MenuDelegate {
protected:
    StatusBarContract() {
        menu->items = {{"Disabled", nullptr, ""}, {"Count", [this] { told += "chosen "; }, ""}};
        menu->delegate = this;
    }
    void menuDidClose(Menu& closed) override { told += &closed == menu.get() ? "closed " : "stranger "; }

    /// An item whose action writes down the event, for clicks of these types.
    std::shared_ptr<StatusItem> show(unsigned mask) {
        auto item = this->machine().statusBar().statusItem(StatusBar::variableLength);
        item->announceMenu(menu);
        item->button()->setImage(this->picture());
        item->button()->sendActionOn(mask);
        item->button()->setAction([this] {
            const auto event = this->machine().application().currentEvent();
            told += event.type == EventType::rightMouseUp ? "right" : "left";
            told += event.modifierFlags & EventModifierFlags::option ? "+option " : " ";
        });
        EXPECT_TRUE(this->waitUntil([&] { return this->rig.hasStatusItem(); }));
        return item;
    }
    static NamedImage picture() { return {"menubar-off"}; }
    bool tells(const std::string& expected) {
        return this->waitUntil([&] { return told == expected; });
    }
    bool opensMenu() {
        return this->waitUntil([&] { return this->rig.menuIsOpen(); });
    }
    bool closesMenu() {
        return this->waitUntil([&] { return !this->rig.menuIsOpen(); });
    }

    const std::shared_ptr<Menu> menu = std::make_shared<Menu>("Menu");
    std::string told;
    static constexpr unsigned left = eventMask(EventType::leftMouseUp);
    static constexpr unsigned right = eventMask(EventType::rightMouseUp);
};

TYPED_TEST_SUITE_P(StatusBarContract);

TYPED_TEST_P(StatusBarContract, ClicksSendTheActionWithTheirEvent) {
    const auto item = this->show(this->left);
    this->rig.click(EventType::leftMouseUp, 0u);
    EXPECT_TRUE(this->tells("left ")) << this->told;
    this->rig.click(EventType::leftMouseUp, EventModifierFlags::option);
    EXPECT_TRUE(this->tells("left left+option ")) << this->told;
    EXPECT_EQ(this->machine().application().currentEvent().type, EventType::none);
}

TYPED_TEST_P(StatusBarContract, AnItemWithoutAPictureStillTakesClicks) {
    const auto item = this->show(this->left);
    item->button()->setImage(std::nullopt);
    this->rig.click(EventType::leftMouseUp, 0u);
    EXPECT_TRUE(this->tells("left ")) << this->told;
}

TYPED_TEST_P(StatusBarContract, AnActionMayPopAMenuUpAndOtherClicksDoNotSendIt) {
    const auto item = this->show(this->right);
    item->button()->setAction([&, button = item->button()] {
        this->told += "right ";
        button->popUp(this->menu, {0, button->frame().size.height + 2});
    });
    this->rig.click(EventType::leftMouseUp, 0u);
    this->rig.click(EventType::rightMouseUp, 0u);
    ASSERT_TRUE(this->opensMenu());
    EXPECT_TRUE(this->told.starts_with("right ")) << this->told;
    this->rig.closeMenu();
    EXPECT_TRUE(this->closesMenu());
    EXPECT_TRUE(this->tells("right closed ")) << this->told;

    this->told.clear();
    this->rig.click(EventType::rightMouseUp, 0u);
    ASSERT_TRUE(this->opensMenu());
    this->rig.chooseLast();
    // The order of the two is the system's affair.
    EXPECT_TRUE(this->waitUntil([&] {
        return this->told == "right closed chosen " || this->told == "right chosen closed ";
    })) << this->told;
}

TYPED_TEST_P(StatusBarContract, AnAttachedMenuTakesTheClick) {
    const auto item = this->show(this->left | this->right);
    item->setMenu(this->menu);
    this->rig.click(EventType::leftMouseUp, 0u);
    ASSERT_TRUE(this->opensMenu());
    this->rig.closeMenu();
    EXPECT_TRUE(this->tells("closed ")) << this->told;
    item->setMenu(nullptr);
    this->rig.click(EventType::leftMouseUp, 0u);
    EXPECT_TRUE(this->tells("closed left ")) << this->told;
}

TYPED_TEST_P(StatusBarContract, DroppingAnItemRemovesIt) {
    auto item = this->show(this->left);
    item = nullptr;
    EXPECT_TRUE(this->waitUntil([&] { return !this->rig.hasStatusItem(); }));
}

REGISTER_TYPED_TEST_SUITE_P(StatusBarContract, ClicksSendTheActionWithTheirEvent,
                            AnItemWithoutAPictureStillTakesClicks,
                            AnActionMayPopAMenuUpAndOtherClicksDoNotSendIt, AnAttachedMenuTakesTheClick,
                            DroppingAnItemRemovesIt);

} // namespace tavro
