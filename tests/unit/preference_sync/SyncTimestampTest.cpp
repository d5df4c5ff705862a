#include "preference_sync/SyncTimestamp.h"

#include <bit>
#include <cmath>
#include <cstdint>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace lumatile {
namespace {

TEST(SyncTimestamp, isTheDoubleWithItsLowestByteFirst) {
    EXPECT_EQ(SyncTimestamp::encode(0), Bytes(8, '\0'));
    // 1.0 is 0x3ff0000000000000, -2.0 is 0xc000000000000000.
    EXPECT_EQ(SyncTimestamp::encode(1), Bytes("\0\0\0\0\0\0\xf0\x3f", 8));
    EXPECT_EQ(SyncTimestamp::encode(-2), Bytes("\0\0\0\0\0\0\0\xc0", 8));
    // 1700000000.5 is 0x41d954fc40200000.
    EXPECT_EQ(SyncTimestamp::encode(1700000000.5), Bytes("\0\0\x20\x40\xfc\x54\xd9\x41", 8));
}

TEST(SyncTimestamp, isZeroWhereThereIsNone) { EXPECT_EQ(SyncTimestamp::decode(std::nullopt), 0); }

TEST(SyncTimestamp, isZeroWhenItIsNotEightBytesLong) {
    const Bytes time = SyncTimestamp::encode(1700000000);
    for (std::size_t length = 0; length < time.size(); ++length) {
        EXPECT_EQ(SyncTimestamp::decode(time.substr(0, length)), 0) << length;
    }
    EXPECT_EQ(SyncTimestamp::decode(time + '\0'), 0);
    EXPECT_EQ(SyncTimestamp::decode(time + time), 0);
}

RC_GTEST_PROP(SyncTimestamp, everyPatternOfBitsComesBack, (std::uint64_t bits)) {
    const auto seconds = std::bit_cast<double>(bits);
    const double back = SyncTimestamp::decode(SyncTimestamp::encode(seconds));
    RC_ASSERT(std::bit_cast<std::uint64_t>(back) == bits);
}

}  // namespace
}  // namespace lumatile
