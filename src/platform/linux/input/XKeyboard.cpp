#include "platform/linux/input/XKeyboard.h"

#include "platform/linux/input/VirtualKeys.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

#define explicit explicit_ // a field of the next header is named so
#include <xcb/xkb.h>
#undef explicit

namespace tavro {

namespace {

constexpr std::size_t modifierCount = 8;
/// All events of the extension have one number.
constexpr XEventKind<xcb_generic_event_t> xkbEvents{0, &xcb_xkb_id};

bool locks(xkb_keysym_t symbol) {
    constexpr std::array lockSymbols{XKB_KEY_Caps_Lock,      XKB_KEY_Shift_Lock, XKB_KEY_Num_Lock,
                                     XKB_KEY_Scroll_Lock,    XKB_KEY_ISO_Lock,   XKB_KEY_ISO_Level3_Lock,
                                     XKB_KEY_ISO_Level5_Lock};
    return std::ranges::find(lockSymbols, static_cast<int>(symbol)) != lockSymbols.end();
}

/// Accents stand for keys that type none by themselves.
const char* accentOf(xkb_keysym_t symbol) {
    constexpr std::pair<xkb_keysym_t, const char*> accents[] = {
        {XKB_KEY_dead_grave, "`"},     {XKB_KEY_dead_acute, "´"},       {XKB_KEY_dead_circumflex, "^"},
        {XKB_KEY_dead_tilde, "~"},     {XKB_KEY_dead_diaeresis, "¨"},   {XKB_KEY_dead_cedilla, "¸"},
        {XKB_KEY_dead_macron, "¯"},    {XKB_KEY_dead_breve, "˘"},       {XKB_KEY_dead_abovedot, "˙"},
        {XKB_KEY_dead_abovering, "˚"}, {XKB_KEY_dead_doubleacute, "˝"}, {XKB_KEY_dead_caron, "ˇ"},
        {XKB_KEY_dead_ogonek, "˛"},
    };
    const auto* accent =
        std::ranges::find_if(accents, [&](const auto& entry) { return entry.first == symbol; });
    return accent == std::end(accents) ? nullptr : accent->second;
}

std::optional<std::string> textOf(xkb_keysym_t symbol) {
    if (const auto* accent = accentOf(symbol))
        return accent;
    std::array<char, 16> text{};
    const bool isText = xkb_keysym_to_utf8(symbol, text.data(), text.size()) > 1;
    const bool isControl = static_cast<unsigned char>(text[0]) < ' ' || text[0] == 0x7F;
    return isText && !isControl ? std::optional<std::string>(text.data()) : std::nullopt;
}

xkb_keysym_t symbolAt(xkb_keymap* keymap, xkb_keycode_t keycode, xkb_layout_index_t layout,
                      xkb_level_index_t level) {
    // A key with fewer layouts than the keyboard has the same ones again.
    const auto layouts = xkb_keymap_num_layouts_for_key(keymap, keycode);
    const xkb_keysym_t* symbols = nullptr;
    if (layouts == 0 ||
        xkb_keymap_key_get_syms_by_level(keymap, keycode, layout % layouts, level, &symbols) != 1)
        return XKB_KEY_NoSymbol;
    return symbols[0];
}

std::optional<xcb_keycode_t> keyWith(xkb_keymap* keymap, xkb_layout_index_t layout, xkb_level_index_t level,
                                     xkb_keysym_t symbol) {
    // The core protocol, and so a grab, knows no keycode beyond a byte.
    const auto last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap), 255);
    for (auto keycode = xkb_keymap_min_keycode(keymap); keycode <= last; ++keycode)
        if (symbolAt(keymap, keycode, layout, level) == symbol)
            return static_cast<xcb_keycode_t>(keycode);
    return std::nullopt;
}

bool typesLatin(xkb_keymap* keymap, xkb_layout_index_t layout) {
    for (xkb_keysym_t letter = XKB_KEY_a; letter <= XKB_KEY_z; ++letter)
        if (!keyWith(keymap, layout, 0, letter))
            return false;
    return true;
}

} // namespace

XKeyboard::XKeyboard(XConnection& x, MainQueue& queue)
    : m_x(x)
    // XKB_DEFAULT_LAYOUT and its kin are no part of it: they say nothing of the server's keyboard.
    , m_context(xkb_context_new(XKB_CONTEXT_NO_ENVIRONMENT_NAMES))
    , m_refresh(queue, [this] { refresh(); })
    , m_mappingChanges(x.on(XEvents::mappingNotify,
                            [this](const auto& event) {
                                if (event.request != XCB_MAPPING_POINTER)
                                    m_refresh.schedule();
                            }))
    , m_xkbChanges(x.on(xkbEvents, [this](const auto&) { m_refresh.schedule(); })) {
    startXkb();
    m_modifiers = readModifiers();
}

void XKeyboard::startXkb() {
    m_hasXkb =
        xkb_x11_setup_xkb_extension(m_x.raw(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                                    XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, nullptr, nullptr);
    if (!m_hasXkb)
        return;
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS |
                                    XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_VIRTUAL_MODS |
                                    XCB_XKB_MAP_PART_VIRTUAL_MOD_MAP;
    xcb_xkb_select_events(m_x.raw(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts, nullptr);
    // Without this flag the server sends a release before each repeated press, and a key that is held looks
    // like one that is pressed again and again.
    constexpr std::uint32_t detectable = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto request =
        xcb_xkb_per_client_flags(m_x.raw(), XCB_XKB_ID_USE_CORE_KBD, detectable, detectable, 0, 0, 0);
    // Or the reply would wait in the queue for ever.
    xcb_discard_reply(m_x.raw(), request.sequence);
}

void XKeyboard::refresh() {
    m_latinLayout.reset();
    m_modifiers = readModifiers();
    m_observers.notify();
}

XKeyboard::Modifiers XKeyboard::readModifiers() const {
    const auto* setup = xcb_get_setup(m_x.raw());
    const auto firstKeycode = setup->min_keycode;
    const auto keyCount = static_cast<std::uint8_t>(setup->max_keycode - firstKeycode + 1);
    const auto keysCookie = xcb_get_modifier_mapping(m_x.raw());
    const auto symbolsCookie = xcb_get_keyboard_mapping(m_x.raw(), firstKeycode, keyCount);
    const XReply<xcb_get_modifier_mapping_reply_t> keys(
        xcb_get_modifier_mapping_reply(m_x.raw(), keysCookie, nullptr));
    const XReply<xcb_get_keyboard_mapping_reply_t> symbols(
        xcb_get_keyboard_mapping_reply(m_x.raw(), symbolsCookie, nullptr));
    if (!keys || !symbols)
        return {};
    const auto perKey = symbols->keysyms_per_keycode;
    const std::size_t perModifier = keys->keycodes_per_modifier;
    const auto symbolsOf = [&](xcb_keycode_t keycode) {
        const auto offset = static_cast<std::size_t>(keycode - firstKeycode) * perKey;
        return std::span(xcb_get_keyboard_mapping_keysyms(symbols.get()) + offset, perKey);
    };
    // Caps Lock, or Shift Lock, is a modifier of the protocol itself.
    Modifiers modifiers{0, 0, XCB_MOD_MASK_LOCK};
    for (std::size_t i = 0; i < modifierCount * perModifier; ++i) {
        const auto keycode = xcb_get_modifier_mapping_keycodes(keys.get())[i];
        const auto bit = static_cast<std::uint16_t>(1u << i / perModifier);
        if (keycode < firstKeycode || bit < XCB_MOD_MASK_1)
            continue;
        for (const auto symbol : symbolsOf(keycode)) {
            if (symbol == XKB_KEY_Alt_L || symbol == XKB_KEY_Alt_R)
                modifiers.alt = modifiers.alt ? modifiers.alt : bit;
            else if (symbol == XKB_KEY_Super_L || symbol == XKB_KEY_Super_R)
                modifiers.super = modifiers.super ? modifiers.super : bit;
            else if (locks(symbol))
                modifiers.locks |= bit;
        }
    }
    // A bit that is a lock's as well is taken for the modifier: without it there would be no shortcut.
    modifiers.locks &= static_cast<std::uint16_t>(~(modifiers.alt | modifiers.super));
    return modifiers;
}

std::optional<std::string> XKeyboard::displayText(std::uint16_t keyCode) const {
    const auto keycode = keycodeOfVirtualKey(keyCode);
    const auto& latin = latinLayout();
    if (!keycode || !latin.keymap)
        return std::nullopt;
    const auto active = activeLayout();
    const bool isLatin =
        active < xkb_keymap_num_layouts(latin.keymap.get()) && typesLatin(latin.keymap.get(), active);
    const auto layout = isLatin ? active : latin.layout;
    // The keypad types its figures on the second level.
    for (const xkb_level_index_t level : {0u, 1u})
        if (auto text = textOf(symbolAt(latin.keymap.get(), *keycode, layout, level)))
            return text;
    return std::nullopt;
}

// Asked each time: events on the state of the keyboard would come with every press of Shift.
xkb_layout_index_t XKeyboard::activeLayout() const {
    if (!m_hasXkb)
        return 0;
    const XReply<xcb_xkb_get_state_reply_t> state(
        xcb_xkb_get_state_reply(m_x.raw(), xcb_xkb_get_state(m_x.raw(), XCB_XKB_ID_USE_CORE_KBD), nullptr));
    return state ? state->group : 0;
}

std::optional<XKeyboard::Stroke> XKeyboard::strokeTyping(xkb_keysym_t symbol) const {
    const auto& latin = latinLayout();
    for (const bool withShift : {false, true}) {
        const auto level = xkb_level_index_t{withShift};
        const auto keycode =
            latin.keymap ? keyWith(latin.keymap.get(), latin.layout, level, symbol) : std::nullopt;
        if (keycode)
            return Stroke{*keycode, withShift};
    }
    return std::nullopt;
}

const XKeyboard::LatinLayout& XKeyboard::latinLayout() const {
    if (!m_latinLayout)
        m_latinLayout = readLatinLayout();
    return *m_latinLayout;
}

// A keyboard for another script only is taken for what is engraved beside it.
XKeyboard::LatinLayout XKeyboard::readLatinLayout() const {
    if (!m_context)
        return {};
    if (m_hasXkb) {
        const auto device = xkb_x11_get_core_keyboard_device_id(m_x.raw());
        Keymap keymap(
            xkb_x11_keymap_new_from_device(m_context.get(), m_x.raw(), device, XKB_KEYMAP_COMPILE_NO_FLAGS));
        for (xkb_layout_index_t layout = 0; keymap && layout < xkb_keymap_num_layouts(keymap.get()); ++layout)
            if (typesLatin(keymap.get(), layout))
                return {std::move(keymap), layout};
    }
    xkb_rule_names us{};
    us.layout = "us";
    return {Keymap(xkb_keymap_new_from_names(m_context.get(), &us, XKB_KEYMAP_COMPILE_NO_FLAGS)), 0};
}

} // namespace tavro
