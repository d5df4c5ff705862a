#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "base/JSONLimits.h"

namespace lumatile {

/// Reads JSON that comes from outside. A text is read whole or refused whole, nothing here throws
/// because of its content, and the typed readers never turn one type into another.
struct BoundedJSON {
    BoundedJSON() = delete;

    /// @return absent when `text` is not exactly one JSON value in valid UTF-8, has an object with
    /// the same key twice (readers would disagree on which one counts), holds a number too large
    /// for a double, or exceeds one of `limits`
    static std::optional<nlohmann::json> parse(std::string_view text, const JSONLimits& limits);

    /// The value of `key`; null when `value` is no object or has no such key. Lives as long as
    /// `value`.
    static const nlohmann::json* member(const nlohmann::json& value, std::string_view key);

    /// `true` or `false`; a number is never a boolean.
    static std::optional<bool> boolean(const nlohmann::json& value);

    /// A whole number that `Integer` can hold. 12.0 and 1e1 are whole numbers as well; fractions,
    /// booleans and numbers out of range are absent.
    template <std::integral Integer>
    static std::optional<Integer> integer(const nlohmann::json& value);

    /// Any number; whole numbers beyond 2^53 are rounded to the nearest double.
    static std::optional<double> number(const nlohmann::json& value);

    static std::optional<std::string> string(const nlohmann::json& value);
};

template <std::integral Integer>
std::optional<Integer> BoundedJSON::integer(const nlohmann::json& value) {
    // The parser keeps every whole number of 64 bits as an integer, however it was written, so a
    // floating-point value here is a fraction or out of range.
    if (value.is_number_unsigned()) {
        const auto whole = value.get<std::uint64_t>();
        return std::in_range<Integer>(whole) ? std::optional(static_cast<Integer>(whole))
                                             : std::nullopt;
    }
    if (value.is_number_integer()) {
        const auto whole = value.get<std::int64_t>();
        return std::in_range<Integer>(whole) ? std::optional(static_cast<Integer>(whole))
                                             : std::nullopt;
    }
    return std::nullopt;
}

}  // namespace lumatile
