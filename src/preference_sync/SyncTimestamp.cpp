#include "preference_sync/SyncTimestamp.h"

#include <bit>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace lumatile::SyncTimestamp {

static_assert(std::numeric_limits<double>::is_iec559 && sizeof(double) == sizeof(std::uint64_t));

Bytes encode(double seconds) {
    auto bits = std::bit_cast<std::uint64_t>(seconds);
    Bytes stored;
    for (std::size_t index = 0; index < sizeof bits; ++index) {
        stored.push_back(static_cast<char>(static_cast<unsigned char>(bits & UCHAR_MAX)));
        bits >>= CHAR_BIT;
    }
    return stored;
}

double decode(const std::optional<Bytes>& stored) {
    std::uint64_t bits = 0;
    if (!stored || stored->size() != sizeof bits) {
        return 0;
    }
    for (auto byte = stored->rbegin(); byte != stored->rend(); ++byte) {
        bits = bits << CHAR_BIT | static_cast<unsigned char>(*byte);
    }
    return std::bit_cast<double>(bits);
}

}  // namespace lumatile::SyncTimestamp
