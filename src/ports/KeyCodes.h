#pragma once

#include <cstdint>
#include <optional>

namespace lumatile {

/// Port: which physical key a key press came from.
class KeyCodes {
public:
    virtual ~KeyCodes() = default;

    /// The virtual key code that shortcuts are stored with; absent for a key that none can name.
    /// @param nativeScanCode as the window system numbers its keys
    virtual std::optional<std::uint32_t> virtualKeyCode(std::uint32_t nativeScanCode) = 0;
};

}  // namespace lumatile
