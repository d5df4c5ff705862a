#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11HeldKeys.h"
#include "platform/x11/X11ModifierMap.h"

namespace lumatile {

/// The server's keyboard as it is at present: where the keys are, what the modifiers mean, how keys
/// repeat.
class X11Keyboard {
public:
    using KeyCode = std::uint8_t;

    /// @param connection outlives the keyboard
    explicit X11Keyboard(X11Connection& connection);

    /// Reads everything anew, in one round trip. What the server does not answer is as customary.
    void read();

    /// True for the events after which `read` finds something else.
    bool isChange(const xcb_generic_event_t& event) const;

    /// The server's key code of a physical key; absent where the keyboard has no such key.
    std::optional<KeyCode> keyCodeOf(std::uint32_t virtualKeyCode) const;

    /// The reverse; absent for keys that no shortcut can name.
    std::optional<std::uint32_t> virtualKeyCodeOf(KeyCode keyCode) const;

    const X11ModifierMap& modifiers() const { return modifiers_; }
    const X11HeldKeys::Repeat& repeat() const { return repeat_; }

private:
    bool startXkb();

    X11Connection& connection_;
    bool hasXkb_ = false;
    int firstXkbEvent_ = 0;
    std::unordered_map<std::uint32_t, KeyCode> keyCodes_;         // By virtual key code.
    std::unordered_map<KeyCode, std::uint32_t> virtualKeyCodes_;  // By the server's key code.
    X11ModifierMap modifiers_;
    X11HeldKeys::Repeat repeat_;
};

}  // namespace lumatile
