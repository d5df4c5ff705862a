#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "preference_sync/SharedSet.h"

/// The form in which a set lies in a file that other computers and their services copy about: JSON
/// with a check sum, so that what arrives in part, damaged or made by something else is refused
/// whole.
namespace lumatile::SharedSetCodec {

/// The longest value that is shared, bytes.
constexpr std::size_t largestValue = std::size_t{1} << 20U;

/// More keys, or longer ones, than any version has.
constexpr std::size_t mostKeys = 8;
constexpr std::size_t longestKey = 64;

/// The longest text that is read: every key, escaped, with its longest value, in the form in which
/// four characters stand for three bytes, and room for what is around them.
constexpr std::size_t largestText =
    mostKeys * (largestValue / 3 * 4 + 2 * longestKey + std::size_t{64}) + std::size_t{1024};

/// Where a time is further from zero than that, no clock showed it: it would win against every
/// change for ever. (The year 9999.)
constexpr double latestTime = 253'402'300'800;

/// @return absent for every text that `print` does not write
std::optional<SharedSet> parse(std::string_view text);

/// @return absent when a value, a key or their number is over the bounds, when a key is not plain
/// ASCII, or when the time of the change is not a number that a clock can show
std::optional<std::string> print(const SharedSet& set);

}  // namespace lumatile::SharedSetCodec
