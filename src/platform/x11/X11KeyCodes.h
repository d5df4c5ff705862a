#pragma once

#include "platform/x11/X11KeyLegends.h"
#include "ports/KeyCodes.h"

namespace lumatile {

/// The physical keys of the server's keyboard, by the number that its events carry.
class X11KeyCodes final : public KeyCodes {
public:
    /// @param connection outlives this
    explicit X11KeyCodes(X11Connection& connection) : connection_(connection) {}

    std::optional<std::uint32_t> virtualKeyCode(std::uint32_t nativeScanCode) override;
    std::map<std::uint32_t, std::string> legends() override;

private:
    X11Connection& connection_;
    std::optional<X11KeyLegends> legends_;  ///< Once it is asked for.
};

}  // namespace lumatile
