#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace lumatile {

/// Port: which physical key a key press came from, and what is on the keys.
class KeyCodes {
public:
    virtual ~KeyCodes() = default;

    /// The virtual key code that shortcuts are stored with; absent for a key that none can name.
    /// @param nativeScanCode as the window system numbers its keys
    virtual std::optional<std::uint32_t> virtualKeyCode(std::uint32_t nativeScanCode) = 0;

    /// What the present layout has on the keys, by virtual key code: a character, letters in upper
    /// case, or the English name of a key that has none ("F5"). A key that is not known is missing.
    virtual std::map<std::uint32_t, std::string> legends() { return {}; }
};

}  // namespace lumatile
