#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace lumatile {

/// A combination as keyboards print it, for the log: "Ctrl+Alt+Left".
/// @param keyCode virtual key code; one that belongs to no key is named by its number
/// @param modifiers classic modifier mask; unknown bits are left out
/// @param legends what is on the keys; a key that is missing there is as on a US keyboard
std::string shortcutText(std::uint32_t keyCode, std::uint32_t modifiers,
                         const std::map<std::uint32_t, std::string>& legends = {});

}  // namespace lumatile
