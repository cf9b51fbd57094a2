#include "support/machines/UiTest.h"

#include "audio/AlertMuteView.h"
#include "audio/AlertView.h"
#include "platform/menubar/Menu.h"
#include "popover/ContentView.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTranslator>

namespace tavro {
namespace {

/// What the widget and those in it say, but for the tabs, which stay as they are, and shortcuts.
QStringList textsIn(const QWidget& widget) {
    QStringList texts;
    for (const auto* child : widget.findChildren<QWidget*>()) {
        texts << child->accessibleName() << child->accessibleDescription() << child->toolTip();
        if (const auto* label = qobject_cast<const QLabel*>(child))
            texts << label->text();
        else if (const auto* button = qobject_cast<const QAbstractButton*>(child))
            texts << button->text();
        else if (const auto* field = qobject_cast<const QLineEdit*>(child))
            texts << field->placeholderText();
    }
    texts.replaceInStrings(QRegularExpression(" ?Shift\\+Super\\+M$"), "");
    texts.removeAll(QString());
    texts.removeAll("General");
    return texts;
}

class TranslationTest : public UiTest {
protected:
    QStringList texts() {
        auto all = textsIn(*popover()) + textsIn(preferences());
        for (const auto& item : launch.delegate.statusBarMenu->items)
            all << QString::fromStdString(item.title);
        for (const bool isMuted : {false, true}) {
            const AlertView alert(isMuted);
            all << QString::fromStdString(alert.body().text);
            alert.window->close();
        }
        return all;
    }
};

TEST_F(TranslationTest, EveryShownTextIsTranslated) {
    const auto shown = texts();
    EXPECT_THAT(shown, testing::IsSupersetOf({QString("Presentation mode"), QString("Select..."),
                                              QString("Record Shortcut"), QString("Mic Muted")}));
    const QDir folder(":/translations");
    const auto files = folder.entryList();
    EXPECT_FALSE(files.empty());
    for (const auto& file : files) {
        QTranslator language;
        ASSERT_TRUE(language.load(folder.filePath(file)));
        for (const auto& text : shown)
            EXPECT_FALSE(language.translate("TavroPRO", text.toUtf8().constData()).isEmpty())
                << file.toStdString() << ": " << text.toStdString();
    }
}

} // namespace
} // namespace tavro
