#include "support/MachineTest.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "platform/input/KeyboardLayout.h"
#include "ui/preferences/RecorderCocoa.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QVBoxLayout>

namespace {

using namespace tavro::KeyboardShortcuts;
using Key = Input::Key;

} // namespace

/// Two fields in a window between other windows.
class Recorder : public MachineTest {
protected:
    void SetUp() override {
        MachineTest::SetUp();
        setShortcut(Shortcut(46, 768), name);
        onKeyDown(name, [this] { ++fired; });
        window = std::make_unique<QWidget>();
        window->setGeometry(300, 300, 400, 200);
        auto* layout = new QVBoxLayout(window.get());
        field =
            new tavro::RecorderCocoa(name, [this](const auto& s) { told += s ? s->description() : "none"; });
        next = new QLineEdit;
        layout->addWidget(field);
        layout->addWidget(next);
        layout->addStretch();
        window->show();
        ASSERT_TRUE(shows("the window in front", [&] { return window->isActiveWindow(); }));
        next->clearFocus();
    }
    void TearDown() override {
        window.reset();
        Session::run("setxkbmap -layout us");
        ASSERT_TRUE(shows("the end of the window", [&] { return !QApplication::activeWindow(); }));
        DesktopTest::TearDown();
    }

    void click(const QWidget& widget, QPoint place) {
        const auto global = widget.mapToGlobal(place);
        input.click({global.x(), global.y()}, Input::Button::left);
    }
    void startRecording() {
        click(*field, {40, 10});
        ASSERT_TRUE(isRecording());
    }
    testing::AssertionResult isRecording() {
        return shows("recording", [&] { return field->placeholderText() == "Press Shortcut" && isPaused(); });
    }
    testing::AssertionResult isIdleWith(const std::string& text) {
        auto result = shows("the end of recording", [&] {
            return field->placeholderText() == "Record Shortcut" && !isPaused() && shownText() == text &&
                   keyboardIsFree();
        });
        return result ? result : result << ", the text is " << shownText();
    }
    bool keyboardIsFree() {
        const bool isFree = server.grabKeyboard();
        if (isFree)
            server.ungrabKeyboard();
        return isFree;
    }
    std::string shownText() const { return field->QLineEdit::text().toStdString(); }
    void type(std::initializer_list<Key> modifiers, Key key) {
        for (const auto modifier : modifiers)
            input.press(modifier);
        input.type(key);
        for (const auto modifier : modifiers)
            input.release(modifier);
    }
    /// Reads the next alert and dismisses it with a key; what it said.
    std::string dismissAlert(const std::function<void()>& trigger) {
        std::string said;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            const auto* alert = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!alert || !alert->isActiveWindow() || !said.empty())
                return;
            EXPECT_EQ(alert->parentWidget(), window.get());
            EXPECT_FALSE(isPaused());
            said = (alert->text() + "|" + alert->informativeText()).toStdString();
            if (const char* picture = std::getenv("TAVRO_TEST_PICTURE"))
                Session::run(std::string("import -window root ") + picture);
            input.type(Key::enter);
        });
        look.start(20);
        trigger();
        EXPECT_TRUE(shows("an alert", [&] { return !said.empty(); }));
        return said;
    }

    const Name name{"test"};
    std::unique_ptr<QWidget> window;
    tavro::RecorderCocoa* field = nullptr;
    QLineEdit* next = nullptr;
    std::string told;
    int fired = 0;
};

TEST_F(Recorder, TakesKeysThatAreTakenAlready) {
    EXPECT_EQ(shownText(), "⇧⌘M");
    EXPECT_GE(field->width(), 130);
    startRecording();
    type({Key::super, Key::shift}, Key::m); // our own, which rests
    EXPECT_TRUE(isIdleWith("⇧⌘M"));
    EXPECT_EQ(told, "⇧⌘M");
    startRecording();
    input.type(Key::a);
    EXPECT_TRUE(isRecording());
    input.type(Key::f5);
    EXPECT_TRUE(isIdleWith("F5"));
    EXPECT_EQ(fired, 0);
    input.type(Key::f5);
    EXPECT_TRUE(shows("the shortcut's action", [&] { return fired == 1; }));
    startRecording();
    EXPECT_EQ(
        dismissAlert([&] { type({Key::super}, Key::e); }), // the desktop's, for its file manager
        "This keyboard shortcut cannot be used as it's already a system-wide keyboard shortcut.|Most "
        "system-wide keyboard shortcuts can be changed in “System Preferences › Keyboard › Shortcuts“.");
    EXPECT_TRUE(isRecording());
    type({Key::control, Key::super}, Key::e);
    EXPECT_TRUE(isIdleWith("⌃⌘E"));
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(server.applicationWindows().size(), 4u); // and no file manager
}

TEST_F(Recorder, EndsWithAClickElsewhereTabOrEscape) {
    const auto bottom = field->height();
    const std::pair<const char*, std::function<void()>> ends[] = {
        {"Escape", [&] { input.type(Key::escape); }},
        {"a click",
         [&] {
             click(*field, {40, bottom + 4});
         }},
        {"Tab", [&] { input.type(Key::tab); }},
        {"a click in another program", [&] { server.activate(server.applicationWindows().at(2)); }},
    };
    for (const auto& [what, end] : ends) {
        SCOPED_TRACE(what);
        startRecording();
        click(*field, {40, bottom + 2});
        EXPECT_TRUE(isRecording());
        end();
        EXPECT_TRUE(isIdleWith("⇧⌘M"));
        EXPECT_EQ(next->hasFocus(), std::string(what) == "Tab");
        next->clearFocus();
    }
    EXPECT_EQ(told, "");
    type({Key::super, Key::shift}, Key::m);
    EXPECT_TRUE(shows("the shortcut's action", [&] { return fired == 1; }));
}

TEST_F(Recorder, ClearsWithAKeyAndWithItsButton) {
    startRecording();
    input.type(Key::backspace);
    EXPECT_TRUE(shows("nothing", [&] { return shownText().empty() && told == "none"; }));
    EXPECT_TRUE(isRecording());
    type({Key::control, Key::shift}, Key::a);
    EXPECT_TRUE(isIdleWith("⌃⇧A"));
    for (const bool whileRecording : {false, true}) {
        SCOPED_TRACE(whileRecording);
        setShortcut(Shortcut(46, 768), name);
        told.clear();
        if (whileRecording)
            startRecording();
        const auto* button = field->findChild<QAbstractButton*>();
        ASSERT_TRUE(shows("the button", [&] { return button->isVisible(); }));
        click(*button, button->rect().center());
        EXPECT_TRUE(shows("nothing", [&] { return shownText().empty() && told == "none"; }));
        EXPECT_TRUE(isRecording());
        EXPECT_EQ(getShortcut(name), std::nullopt);
        input.type(Key::escape);
        EXPECT_TRUE(isIdleWith(""));
    }
}

TEST_F(Recorder, ShowsWhatTheLayoutPrintsAndTellsScreenReaders) {
    const std::pair<const char*, const char*> layouts[] = {
        {"fr", "⇧⌘,"}, {"ru,us", "⇧⌘M"}, {"ru", "⇧⌘M"}, {"de", "⇧⌘M"}};
    for (const auto& [layout, text] : layouts) {
        SCOPED_TRACE(layout);
        ASSERT_TRUE(Session::run(std::string("setxkbmap -layout ") + layout));
        EXPECT_TRUE(shows("the key's text", [&] { return Shortcut(46, 768).description() == text; }));
    }
    field->setAccessibleName("Mute Mic:");
    auto* accessible = QAccessible::queryAccessibleInterface(field);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::EditableText);
    EXPECT_EQ(accessible->text(QAccessible::Name), "Mute Mic:");
    EXPECT_EQ(accessible->text(QAccessible::Value), "⇧⌘M");
    startRecording();
    EXPECT_EQ(accessible->text(QAccessible::Description), "Press Shortcut");
    input.type(Key::escape);
    EXPECT_TRUE(isIdleWith("⇧⌘M"));
    startRecording();
    window.reset();
    EXPECT_FALSE(isPaused());
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
