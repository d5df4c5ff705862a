#pragma once

#include <cstdint>

/// Physical keys by their place on a PC keyboard, as the server's key codes (scan code + 8).
namespace lumatile::desktop::KeyPosition {

inline constexpr std::uint8_t escape = 9;
inline constexpr std::uint8_t backspace = 22;
inline constexpr std::uint8_t tab = 23;
inline constexpr std::uint8_t q = 24;
inline constexpr std::uint8_t w = 25;
inline constexpr std::uint8_t e = 26;
inline constexpr std::uint8_t r = 27;
inline constexpr std::uint8_t t = 28;
inline constexpr std::uint8_t u = 30;
inline constexpr std::uint8_t i = 31;
inline constexpr std::uint8_t enter = 36;
inline constexpr std::uint8_t leftControl = 37;
inline constexpr std::uint8_t a = 38;
inline constexpr std::uint8_t d = 40;
inline constexpr std::uint8_t f = 41;
inline constexpr std::uint8_t g = 42;
inline constexpr std::uint8_t j = 44;
inline constexpr std::uint8_t k = 45;
inline constexpr std::uint8_t leftShift = 50;
inline constexpr std::uint8_t c = 54;
inline constexpr std::uint8_t m = 58;
inline constexpr std::uint8_t leftAlt = 64;
inline constexpr std::uint8_t space = 65;
inline constexpr std::uint8_t capsLock = 66;
inline constexpr std::uint8_t numLock = 77;
inline constexpr std::uint8_t scrollLock = 78;
inline constexpr std::uint8_t printScreen = 107;
inline constexpr std::uint8_t up = 111;
inline constexpr std::uint8_t left = 113;
inline constexpr std::uint8_t right = 114;
inline constexpr std::uint8_t down = 116;
inline constexpr std::uint8_t leftSuper = 133;

}  // namespace lumatile::desktop::KeyPosition
