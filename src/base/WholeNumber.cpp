#include "base/WholeNumber.h"

#include <charconv>
#include <string>
#include <system_error>

namespace lumatile {

namespace {

// Longer decimal texts do not fit into 64 bits.
constexpr std::size_t maxDigits = 20;

template <typename Integer>
std::optional<WholeNumber> parsed(const std::string& digits) {
    Integer value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (error != std::errc{} || stop != end) {
        return std::nullopt;
    }
    return WholeNumber{value};
}

}  // namespace

std::optional<WholeNumber> wholeNumber(std::string_view number) {
    const bool negative = number.starts_with('-');
    if (negative) {
        number.remove_prefix(1);
    }

    std::int64_t exponent = 0;
    const std::size_t mark = number.find_first_of("eE");
    if (mark != std::string_view::npos) {
        std::string_view power = number.substr(mark + 1);
        if (power.starts_with('+')) {
            power.remove_prefix(1);
        }
        const auto [stop, error] =
            std::from_chars(power.data(), power.data() + power.size(), exponent);
        // Also bounds the exponent, so that the sums below cannot overflow.
        if (error != std::errc{} || exponent < -1'000'000'000 || exponent > 1'000'000'000) {
            return std::nullopt;
        }
        number = number.substr(0, mark);
    }

    // number = digits · 10^exponent, with no zero at either end of the digits.
    std::string digits(number);
    const std::size_t point = digits.find('.');
    if (point != std::string::npos) {
        exponent -= static_cast<std::int64_t>(digits.size() - point - 1);
        digits.erase(point, 1);
    }
    digits.erase(0, digits.find_first_not_of('0'));
    if (digits.empty()) {
        return WholeNumber{std::uint64_t{0}};
    }
    const std::size_t significant = digits.find_last_not_of('0') + 1;
    exponent += static_cast<std::int64_t>(digits.size() - significant);
    digits.resize(significant);

    if (exponent < 0 || digits.size() + static_cast<std::size_t>(exponent) > maxDigits) {
        return std::nullopt;
    }
    digits.append(static_cast<std::size_t>(exponent), '0');
    return negative ? parsed<std::int64_t>('-' + digits) : parsed<std::uint64_t>(digits);
}

}  // namespace lumatile
