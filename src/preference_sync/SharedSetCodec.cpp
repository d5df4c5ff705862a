#include "preference_sync/SharedSetCodec.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <nlohmann/json.hpp>

#include "base/Base64.h"
#include "base/BoundedJSON.h"

namespace lumatile::SharedSetCodec {

namespace {

constexpr const char* formatName = "lumatile-settings-1";

/// Two objects, and three values beside those of the set.
constexpr JSONLimits limits{.bytes = largestText,
                            .depth = 2,
                            .stringBytes = largestValue / 3 * 4 + 4,
                            .values = mostKeys + 4};

bool isPlain(char letter) { return letter > ' ' && letter <= '~'; }

bool isWithinBounds(const SharedSet& set) {
    const bool isNumber = std::abs(changeTime(set)) <= latestTime;  // False for one that is none.
    return isNumber && set.size() <= mostKeys &&
           std::all_of(set.begin(), set.end(), [](const auto& entry) {
               return !entry.first.empty() && entry.first.size() <= longestKey &&
                      std::all_of(entry.first.begin(), entry.first.end(), isPlain) &&
                      entry.second.size() <= largestValue;
           });
}

/// Against accidents, not against forgery. Every step is a bijection, so a change of one character
/// never goes unseen.
class CheckSum {
public:
    void add(std::string_view bytes) {
        add(std::uint64_t{bytes.size()});
        for (const char byte : bytes) {
            step(static_cast<unsigned char>(byte));
        }
    }

    std::string text() const {
        constexpr std::string_view digits = "0123456789abcdef";
        constexpr unsigned digitBits = 4;
        constexpr unsigned bits = 64;
        std::string text;
        for (unsigned shift = bits; shift > 0; shift -= digitBits) {
            text.push_back(digits[sum_ >> (shift - digitBits) & (digits.size() - 1)]);
        }
        return text;
    }

private:
    void add(std::uint64_t length) {
        constexpr unsigned byteBits = 8;
        for (unsigned index = 0; index < sizeof length; ++index) {
            step(static_cast<unsigned char>(length >> (byteBits * index) & 0xffU));
        }
    }

    // FNV-1a, 64 bits.
    void step(unsigned char byte) { sum_ = (sum_ ^ byte) * 0x100000001b3U; }

    std::uint64_t sum_ = 0xcbf29ce484222325U;
};

std::string checkSum(const SharedSet& set) {
    CheckSum sum;
    for (const auto& [key, value] : set) {
        sum.add(std::string_view(key));
        sum.add(std::string_view(value));
    }
    return sum.text();
}

}  // namespace

std::optional<SharedSet> parse(std::string_view text) {
    const std::optional<nlohmann::json> root = BoundedJSON::parse(text, limits);
    const nlohmann::json* values = root ? BoundedJSON::member(*root, "values") : nullptr;
    if (values == nullptr || !values->is_object()) {
        return std::nullopt;
    }
    SharedSet set;
    for (const auto& [key, value] : values->items()) {
        const std::optional<std::string> encoded = BoundedJSON::string(value);
        std::optional<Bytes> bytes = encoded ? Base64::decode(*encoded) : std::nullopt;
        if (!bytes) {
            return std::nullopt;
        }
        set.insert_or_assign(key, std::move(*bytes));
    }
    // Compared as a whole: format, order, white space and check sum are then right as well, and
    // two computers never write different texts for one set.
    if (print(set) != text) {
        return std::nullopt;
    }
    return set;
}

std::optional<std::string> print(const SharedSet& set) {
    if (!isWithinBounds(set)) {
        return std::nullopt;
    }
    nlohmann::ordered_json values = nlohmann::ordered_json::object();
    for (const auto& [key, value] : set) {
        values[key] = Base64::encode(value);
    }
    nlohmann::ordered_json root = nlohmann::ordered_json::object();
    root["format"] = formatName;
    root["values"] = std::move(values);
    root["checkSum"] = checkSum(set);
    constexpr int indent = 1;
    return root.dump(indent) + '\n';
}

}  // namespace lumatile::SharedSetCodec
