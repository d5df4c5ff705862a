#pragma once

#include "platform/x11/X11Keyboard.h"
#include "ports/KeyCodes.h"

namespace lumatile {

/// The physical keys of the server's keyboard, by the number that its events carry.
class X11KeyCodes final : public KeyCodes {
public:
    /// @param connection outlives this
    explicit X11KeyCodes(X11Connection& connection) : connection_(connection) {}

    std::optional<std::uint32_t> virtualKeyCode(std::uint32_t nativeScanCode) override;

private:
    X11Connection& connection_;
};

}  // namespace lumatile
