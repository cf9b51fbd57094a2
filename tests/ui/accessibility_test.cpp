#include "support/machines/UiTest.h"

#include "LaunchAtLogin/LaunchAtLogin.h"

#include <QAccessible>

namespace tavro {
namespace {

using Role = QAccessible::Role;
using Said = std::vector<std::pair<Role, std::string>>;

/// As assistive technology sees it.
class AccessibilityTest : public UiTest {
protected:
    /// All that is visible, with its parents before it.
    static std::vector<QAccessibleInterface*> all(QAccessibleInterface* root) {
        std::vector<QAccessibleInterface*> found{root};
        for (int i = 0; i < root->childCount(); ++i)
            if (auto* child = root->child(i); child && !child->state().invisible)
                std::ranges::copy(all(child), std::back_inserter(found));
        return found;
    }
    static std::vector<QAccessibleInterface*> all(QWidget& widget) {
        widget.show();
        return all(QAccessible::queryAccessibleInterface(&widget));
    }
    static std::string name(const QAccessibleInterface& accessible) {
        return accessible.text(QAccessible::Name).toStdString();
    }
    /// Roles and names, but for what only groups other things.
    static Said said(QWidget& widget) {
        Said result;
        for (const auto* accessible : all(widget))
            if (!name(*accessible).empty() || accessible->role() != Role::Client)
                result.emplace_back(accessible->role(), name(*accessible));
        return result;
    }
    static QAccessibleInterface& find(QWidget& widget, Role role, const std::string& wanted) {
        for (auto* accessible : all(widget))
            if (accessible->role() == role && name(*accessible) == wanted)
                return *accessible;
        throw std::runtime_error("nothing is named " + wanted);
    }
    static void act(QAccessibleInterface& accessible, const QString& action) {
        ASSERT_TRUE(accessible.actionInterface());
        ASSERT_TRUE(accessible.actionInterface()->actionNames().contains(action));
        accessible.actionInterface()->doAction(action);
        settle();
    }
};

TEST_F(AccessibilityTest, ThePopoverIsAnnouncedAndOperable) {
    publishNewVersion();
    const auto widget = popover();
    Said expected{{Role::Client, "TavroPRO"}, {Role::CheckBox, ContentView::headerTitle}};
    for (const auto& option : UserSettings::shared().options())
        expected.emplace_back(Role::CheckBox, option.name);
    expected.emplace_back(Role::Button, "🎉 New version is available. Click to update");
    EXPECT_EQ(said(*widget), expected);
    auto& row = find(*widget, Role::CheckBox, UserSettings::shared().options()[3].name);
    for (const bool isOn : {!row.state().checked, static_cast<bool>(row.state().checked)}) {
        act(row, QAccessibleActionInterface::toggleAction());
        EXPECT_EQ(UserSettings::shared().options()[3].isOn, isOn);
        EXPECT_EQ(row.state().checked, isOn);
    }
    act(*all(*widget).back(), QAccessibleActionInterface::pressAction());
    const auto page = std::string("workspace.open ") + Constants::changelogURL;
    EXPECT_TRUE(comesTo("the page", [&] { return mac.journal().lines().back() == page; }));
}

TEST_F(AccessibilityTest, ThePreferencesAreAnnouncedAndOperable) {
    chooseWallpaper();
    auto& window = preferences();
    const Said expected{
        {Role::Window, "TavroPRO"},
        {Role::RadioButton, "General"},
        {Role::StaticText, "Startup"},
        {Role::CheckBox, "Launch at login"},
        {Role::StaticText, "Toggle TavroPRO"},
        {Role::Button, "Toggle TavroPRO"},
        {Role::EditableText, "Toggle TavroPRO"},
        {Role::StaticText, "Mute Mic:"},
        {Role::Button, "Mute Mic: Shift+Super+M"},
        {Role::EditableText, "Mute Mic: Shift+Super+M"},
        {Role::Button, "Clear"},
        {Role::StaticText, "Wallpaper"},
        {Role::Graphic, "Wallpaper"},
        {Role::Button, "Select..."},
        {Role::Button, "Remove"},
    };
    EXPECT_EQ(said(window), expected);
    EXPECT_TRUE(find(window, Role::RadioButton, "General").state().checked);
    const auto& field = find(window, Role::EditableText, "Mute Mic: Shift+Super+M");
    EXPECT_EQ(field.text(QAccessible::Value), "⇧⌘M");
    EXPECT_EQ(field.text(QAccessible::Description), "Record Shortcut");

    auto& login = find(window, Role::CheckBox, "Launch at login");
    for (const bool isOn : {false, true}) {
        act(login, QAccessibleActionInterface::toggleAction());
        EXPECT_EQ(LaunchAtLogin::isEnabled(), isOn);
        EXPECT_EQ(login.state().checked, isOn);
    }
    act(login, QAccessibleActionInterface::toggleAction());
    mac.appService().userSets(AppService::Status::enabled); // elsewhere
    mac.journal().clear();
    act(login, QAccessibleActionInterface::toggleAction());
    EXPECT_EQ(mac.journal().lines("appService"), (Lines{"appService.unregister", "appService.register"}));
    act(find(window, Role::Button, "Select..."), QAccessibleActionInterface::pressAction());
    EXPECT_TRUE(comesTo("the chooser", [&] { return mac.openPanels().shown().has_value(); }));
}

} // namespace
} // namespace tavro
