#pragma once

#include "platform/input/KeyboardLayout.h"
#include "platform/linux/process/OncePerTurn.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/process/MainQueue.h"

#include <xkbcommon/xkbcommon.h>

#include <memory>

namespace tavro {

/// The X server's keyboard: which modifier bit is which key, and what the keys are labelled with.
///
/// Which of the bits Mod1 to Mod5 a press of Super, Alt or Num Lock sets is the keyboard's affair, and
/// changes with its layout or by hand (xmodmap); only Shift, Lock and Control are the protocol's own. So all
/// of that is read again whenever the mapping changes.
class XKeyboard final : public KeyboardLayout {
public:
    /// Bits of the core protocol's modifier state; zero where no key gives that modifier.
    struct Modifiers {
        std::uint16_t alt = 0;
        std::uint16_t super = 0;
        /// All that stay on when their key is let go.
        std::uint16_t locks = 0;
        bool operator==(const Modifiers&) const = default;
    };

    XKeyboard(XConnection& x, MainQueue& queue);

    const Modifiers& modifiers() const { return m_modifiers; }
    std::optional<std::string> displayText(std::uint16_t keyCode) const override;
    /// A key, and whether it takes Shift.
    struct Stroke {
        xcb_keycode_t keycode = 0;
        bool withShift = false;
    };
    /// How the symbol is typed; none where no key has it.
    std::optional<Stroke> strokeTyping(xkb_keysym_t symbol) const;

    /// Told when the modifiers may have changed.
    [[nodiscard]] Observation onChange(std::function<void()> observer) {
        return m_observers.add(std::move(observer));
    }

private:
    struct Unref {
        void operator()(xkb_context* context) const { xkb_context_unref(context); }
        void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    };
    using Keymap = std::unique_ptr<xkb_keymap, Unref>;
    /// A keymap and the first layout in it that types Latin letters.
    struct LatinLayout {
        Keymap keymap;
        xkb_layout_index_t layout = 0;
    };

    void startXkb();
    void refresh();
    Modifiers readModifiers() const;
    /// The one that the user types with now.
    xkb_layout_index_t activeLayout() const;
    const LatinLayout& latinLayout() const;
    LatinLayout readLatinLayout() const;

    XConnection& m_x;
    std::unique_ptr<xkb_context, Unref> m_context;
    bool m_hasXkb = false;
    Modifiers m_modifiers;
    mutable std::optional<LatinLayout> m_latinLayout; // read when it is first asked for
    ObserverList<> m_observers;
    OncePerTurn m_refresh;
    Observation m_mappingChanges, m_xkbChanges;
};

} // namespace tavro
