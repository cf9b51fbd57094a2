#include "platform/linux/input/VirtualKeys.h"

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

#include <memory>
#include <set>
#include <sstream>

namespace tavro {
namespace {

/// The virtual keys and what the keys at their places type on a US keyboard, from the platform's table of
/// names.
TEST(VirtualKeys, StandAtTheirPlaces) {
    std::istringstream keys(
        "0 a 11 b 8 c 2 d 14 e 3 f 5 g 4 h 34 i 38 j 40 k 37 l 46 m 45 n 31 o 35 p 12 q 15 r 1 s "
        "17 t 32 u 9 v 13 w 7 x 16 y 6 z 29 0 18 1 19 2 20 3 21 4 23 5 22 6 26 7 28 8 25 9 "
        "57 Caps_Lock 56 Shift_L 59 Control_L 58 Alt_L 55 Super_L 54 Super_R 61 Alt_R "
        "62 Control_R 60 Shift_R 36 Return 42 backslash 50 grave 43 comma 24 equal 27 minus "
        "47 period 39 apostrophe 41 semicolon 44 slash 49 space 48 Tab 33 bracketleft "
        "30 bracketright 116 Prior 121 Next 115 Home 119 End 126 Up 124 Right 125 Down 123 Left "
        "53 Escape 51 BackSpace 117 Delete 114 Insert 74 XF86AudioMute 72 XF86AudioRaiseVolume "
        "73 XF86AudioLowerVolume 122 F1 120 F2 99 F3 118 F4 96 F5 97 F6 98 F7 100 F8 101 F9 "
        "109 F10 103 F11 111 F12 71 Num_Lock 82 KP_Insert 83 KP_End 84 KP_Down 85 KP_Next "
        "86 KP_Left 87 KP_Begin 88 KP_Right 89 KP_Home 91 KP_Up 92 KP_Prior 65 KP_Delete "
        "75 KP_Divide 76 KP_Enter 81 KP_Equal 78 KP_Subtract 67 KP_Multiply 69 KP_Add 10 less");
    const std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> context(
        xkb_context_new(XKB_CONTEXT_NO_FLAGS), &xkb_context_unref);
    const xkb_rule_names us{"evdev", "pc105", "us", "", ""};
    const std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> keymap(
        xkb_keymap_new_from_names(context.get(), &us, XKB_KEYMAP_COMPILE_NO_FLAGS), &xkb_keymap_unref);
    ASSERT_TRUE(keymap);
    std::uint32_t virtualKey = 0;
    std::string name;
    while (keys >> virtualKey >> name) {
        SCOPED_TRACE(name);
        const auto keycode = keycodeOfVirtualKey(virtualKey);
        ASSERT_TRUE(keycode);
        EXPECT_EQ(virtualKeyOfKeycode(*keycode), virtualKey);
        const xkb_keysym_t* symbols = nullptr;
        ASSERT_EQ(xkb_keymap_key_get_syms_by_level(keymap.get(), *keycode, 0, 0, &symbols), 1);
        char typed[64];
        xkb_keysym_get_name(symbols[0], typed, sizeof typed);
        EXPECT_EQ(typed, name);
    }
    EXPECT_TRUE(keys.eof());
    // The layout data give these to other symbols; the names of their places are the kernel's.
    const std::pair<std::uint32_t, const char*> functionKeys[] = {{105, "FK13"}, {107, "FK14"}, {113, "FK15"},
                                                                  {106, "FK16"}, {64, "FK17"},  {79, "FK18"},
                                                                  {80, "FK19"},  {90, "FK20"}};
    for (const auto& [code, place] : functionKeys)
        EXPECT_STREQ(xkb_keymap_key_get_name(keymap.get(), keycodeOfVirtualKey(code).value()), place);
    EXPECT_EQ(keycodeOfVirtualKey(63), std::nullopt); // "function"
    std::set<std::uint8_t> places;
    for (std::uint32_t code = 0; code < 70'000; ++code)
        if (const auto keycode = keycodeOfVirtualKey(code)) {
            EXPECT_TRUE(places.insert(*keycode).second) << code;
        }
}

} // namespace
} // namespace tavro
