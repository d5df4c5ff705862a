#include "platform/x11/X11KeyCodes.h"

#include <limits>

#include "platform/x11/X11Keyboard.h"

namespace lumatile {

std::optional<std::uint32_t> X11KeyCodes::virtualKeyCode(std::uint32_t nativeScanCode) {
    if (nativeScanCode > std::numeric_limits<X11Keyboard::KeyCode>::max()) {
        return std::nullopt;
    }
    // Asked when a shortcut is recorded, which is rare: what the keyboard was before may have
    // changed.
    return X11Keyboard(connection_)
        .virtualKeyCodeOf(static_cast<X11Keyboard::KeyCode>(nativeScanCode));
}

std::map<std::uint32_t, std::string> X11KeyCodes::legends() {
    if (!legends_) {
        legends_.emplace(connection_);
    }
    return legends_->now();
}

}  // namespace lumatile
