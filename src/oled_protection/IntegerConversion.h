#pragma once

#include <cstdint>

/// The one way from doubles to integers in this module: defined for every value, because not every
/// double that is shown or turned into a path has come through the settings' codec.
namespace lumatile::IntegerConversion {

/// Results stay within this magnitude: the largest that is both a double and, negated as well, a
/// 64-bit integer.
inline constexpr std::int64_t limit = 0x7FFF'FFFF'FFFF'FC00;

/// Rounded half away from zero; brought to `limit` where larger, 0 for a value that is no number.
std::int64_t rounded(double value);

/// Without its fraction; brought to `limit` where larger, 0 for a value that is no number.
std::int64_t truncated(double value);

}  // namespace lumatile::IntegerConversion
