#include "platform/linux/desktops/DesktopAppearance.h"
#include "platform/linux/x11/XSettings.h"

#include "support/servers/BusStandIn.h"
#include "support/servers/PrivateBus.h"

#include <QCoreApplication>
#include <QFont>
#include <QTest>

#include <gtest/gtest.h>

namespace tavro {
namespace {

using namespace std::string_literals;
using Texts = std::map<std::string, std::string>;

// A number, a colour and two texts, in either byte order.
const auto little = "\0\0\0\0\7\0\0\0\4\0\0\0"
                    "\0\0\7\0Xft/DPI\0\1\0\0\0\0\x80\1\0"
                    "\2\0\5\0Color\0\0\0\1\0\0\0\1\2\3\4\5\6\7\x8"
                    "\1\0\xd\0Net/ThemeName\0\0\0\1\0\0\0\4\0\0\0Dark"
                    "\1\0\x4\0Font\1\0\0\0\7\0\0\0Sans 10\0"s;
const auto big = "\1\0\0\0\0\0\0\7\0\0\0\2"
                 "\0\0\0\7Xft/DPI\0\0\0\0\1\0\1\x80\0"
                 "\1\0\0\4Font\0\0\0\1\0\0\0\7Sans 10\0"s;

TEST(XSettings, AreReadInEitherByteOrder) {
    EXPECT_EQ(textsOfXSettings(little), (Texts{{"Net/ThemeName", "Dark"}, {"Font", "Sans 10"}}));
    EXPECT_EQ(textsOfXSettings(big), (Texts{{"Font", "Sans 10"}}));
}

TEST(XSettings, StopAtMalformedBytes) {
    for (std::size_t size = 0; size < little.size(); ++size) {
        // A copy of its own, so that reading beyond it is noticed.
        const std::vector<char> cut(little.begin(), little.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_FALSE(textsOfXSettings({cut.data(), cut.size()}).contains("Font")) << size;
    }
    auto ofUnknownType = big;
    ofUnknownType[12] = 3;
    EXPECT_EQ(textsOfXSettings(ofUnknownType), Texts{});
}

TEST(DesktopAppearance, ParsesFontNames) {
    const struct {
        const char *description, *family;
        double size;
        int weight = QFont::Normal;
        bool isItalic = false;
    } cases[] = {
        {"Sans 10", "Sans", 10},
        {"DejaVu Sans Bold Italic 11.5", "DejaVu Sans", 11.5, QFont::Bold, true},
        {"Cantarell, Medium 11", "Cantarell", 11, QFont::Medium},
        {"Bold 9", "Bold", 9},
        {"Noto Sans Regular 18", "Noto Sans", 18},
    };
    for (const auto& [description, family, size, weight, isItalic] : cases) {
        SCOPED_TRACE(description);
        const auto font = DesktopAppearance::fontOf(description);
        ASSERT_TRUE(font);
        EXPECT_EQ(font->family(), family);
        EXPECT_EQ(font->pointSizeF(), size);
        EXPECT_EQ(font->weight(), weight);
        EXPECT_EQ(font->italic(), isItalic);
    }
    for (const auto* description : {"", "10", "Sans", "Sans 0", "Sans -3", "Sans 1e9", "Sans nan"})
        EXPECT_FALSE(DesktopAppearance::fontOf(description)) << description;
}

TEST(DesktopAppearance, TakesItsLookFromThemesByTheirNames) {
    const struct {
        const char* theme;
        Look look;
    } cases[] = {
        {"Greybird", {false, false}},        {"Greybird-dark", {true, false}},
        {"Yaru-purple-dark", {true, false}}, {"Mint-Y-Dark-Aqua", {true, false}},
        {"HighContrast", {false, true}},     {"HighContrastInverse", {true, true}},
        {"ContrastHigh", {false, true}},     {"ContrastHighInverse", {true, true}},
    };
    for (const auto& [theme, look] : cases) {
        EXPECT_EQ(lookOf(theme, false), look) << theme;
        EXPECT_EQ(lookOf(theme, true), (Look{true, look.hasHighContrast})) << theme;
    }
}

TEST(DesktopAppearance, FollowsThePortalFromItsStartOn) {
    providePrivateBus();
    int count = 0;
    QCoreApplication application(count, nullptr);
    const QString settings = "org.freedesktop.portal.Settings", space = "org.freedesktop.appearance";
    ColorScheme* now = nullptr;
    std::vector<bool> told;
    ColorScheme scheme([&] { told.push_back(now->prefersDark()); });
    now = &scheme;
    EXPECT_FALSE(scheme.prefersDark());
    BusStandIn portal({});
    portal.methods[settings + ".Read " + space + " color-scheme"] = [](auto&) {
        return QVariantList{busVariant(busVariant(1u))};
    };
    QDBusConnection("stand-in").registerService("org.freedesktop.portal.Desktop");
    const auto changes = [&](const QString& inSpace, uint value) {
        auto change =
            QDBusMessage::createSignal("/org/freedesktop/portal/desktop", settings, "SettingChanged");
        change << inSpace << "color-scheme" << busVariant(value);
        QDBusConnection("stand-in").send(change);
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return told == std::vector{true}; }, 30'000));
    changes("org.example", 0);
    changes(space, 1);
    changes(space, 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !scheme.prefersDark(); }, 30'000));
    EXPECT_EQ(told, (std::vector{true, false}));
}

} // namespace
} // namespace tavro
