#include "platform/linux/bus/GSettings.h"
#include "platform/linux/bus/GVariantText.h"

#include "support/TemporaryFolder.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>

namespace tavro {
namespace {

namespace fs = std::filesystem;

TEST(GVariantText, IsParsedWholeOrNotAtAll) {
    const std::pair<const char*, QVariant> cases[] = {
        {"'text'", "text"},
        {R"("it's")", "it's"},
        {R"('a\n\t\'\"\\b \u00e4\U0001f600é')", "a\n\t'\"\\b ä😀é"},
        {"''", ""},
        {"['a', \"it's, ]\"]", QStringList{"a", "it's, ]"}},
        {"@as []", QStringList()},
        {"true", true},
        {"false", false},
    };
    for (const auto& [text, value] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(parseGVariant(QString::fromUtf8(text)), value);
    }
    for (const auto* text : {"uint32 5", "[1, 2]", "[('xkb', 'us')]", "['a', 'b'", "['a' 'b']", "['a', ",
                             "'cut", "'cut\\", "'\\u00zz'", "'text' 'text'", ""})
        EXPECT_FALSE(parseGVariant(QString::fromUtf8(text)).isValid()) << text;
}

// Whatever is asked for, and however much of it.
TEST(GSettings, GiveUpOnAHangingToolInTime) {
    int count = 0;
    const QCoreApplication application(count, nullptr);
    const TemporaryFolder folder;
    const auto path = qgetenv("PATH");
    const auto tool = folder.path() / "gsettings";
    std::ofstream(tool) << "#!/bin/sh\nexec sleep 1000\n";
    fs::permissions(tool, fs::perms::owner_all);
    qputenv("PATH", (folder.path().string() + ":" + path.toStdString()).c_str());

    QStringList schemas;
    for (int number = 0; number < 20; ++number)
        schemas += "org.example.number" + QString::number(number);
    const auto start = std::chrono::steady_clock::now();
    const GSettings settings(std::chrono::seconds(2));
    EXPECT_TRUE(settings.list(schemas).empty());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_EQ(settings.get("org.example", "key").error(), "gsettings does not answer");

    const GSettings patient(std::chrono::seconds(30));
    const auto set = [&] { return patient.set("org.example", "key", true).value_or("success"); };
    fs::remove(tool);
    qputenv("PATH", folder.path().c_str());
    EXPECT_EQ(set(), "gsettings cannot be run");
    qputenv("PATH", path);
    EXPECT_NE(set().find("org.example"), std::string::npos) << set();
}

} // namespace
} // namespace tavro
