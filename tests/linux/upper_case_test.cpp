#include "KeyboardShortcuts/UpperCase.h"

#include <QString>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include <array>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <utility>

namespace tavro {
namespace {

using Layout = std::pair<std::string, std::string>; // and its variant

/// Every layout that is installed, each variant by itself.
std::set<Layout> installedLayouts() {
    std::ifstream list("/usr/share/X11/xkb/rules/evdev.lst");
    std::set<Layout> layouts;
    std::string line, section, name, layout;
    while (std::getline(list, line)) {
        std::istringstream words(line);
        words >> name;
        if (name == "!")
            words >> section;
        else if (section == "layout" && !name.empty() && name != "custom")
            layouts.emplace(name, "");
        else if (section == "variant" && std::getline(words >> std::ws, layout, ':'))
            layouts.emplace(layout, name);
        name.clear();
    }
    return layouts;
}

TEST(UpperCase, IsUnicodesForEveryKeyOfEveryLayout) {
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
        xkb_context_new(XKB_CONTEXT_NO_FLAGS), &xkb_context_unref);
    std::set<xkb_keysym_t> symbols;
    for (const auto& [layout, variant] : installedLayouts()) {
        const xkb_rule_names names{"evdev", "pc105", layout.c_str(), variant.c_str(), ""};
        const std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> keymap(
            xkb_keymap_new_from_names(context.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS), &xkb_keymap_unref);
        ASSERT_TRUE(keymap) << layout << ' ' << variant;
        for (auto key = xkb_keymap_min_keycode(keymap.get()); key <= xkb_keymap_max_keycode(keymap.get());
             ++key) {
            const xkb_keysym_t* ofKey = nullptr;
            const auto count = xkb_keymap_key_get_syms_by_level(keymap.get(), key, 0, 0, &ofKey);
            symbols.insert(ofKey, ofKey + count);
        }
    }
    EXPECT_GT(symbols.size(), 1000u);
    for (const auto symbol : symbols) {
        std::array<char, 8> text{};
        xkb_keysym_to_utf8(symbol, text.data(), text.size());
        EXPECT_EQ(KeyboardShortcuts::upperCase(text.data()), QString(text.data()).toUpper().toStdString())
            << text.data();
    }
}

} // namespace
} // namespace tavro
