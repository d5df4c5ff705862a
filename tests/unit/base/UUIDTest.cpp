#include "base/UUID.h"

#include <string>
#include <unordered_set>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace lumatile {
namespace {

constexpr std::string_view upper = "01234567-89AB-CDEF-0123-456789ABCDEF";
constexpr std::string_view lower = "01234567-89ab-cdef-0123-456789abcdef";

TEST(UUID, readsEitherCaseAndWritesBoth) {
    const auto uuid = UUID::parse(upper);
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid, UUID::parse(lower));
    EXPECT_EQ(uuid, UUID::parse("01234567-89aB-Cdef-0123-456789abCDEF"));
    EXPECT_EQ(uuid->bytes.front(), 0x01);
    EXPECT_EQ(uuid->bytes.back(), 0xEF);
    EXPECT_EQ(uuid->text(), upper);
    EXPECT_EQ(uuid->lowercaseText(), lower);
}

TEST(UUID, refusesEveryOtherText) {
    const std::vector<std::string> malformed{
        "",
        "0123456789ABCDEF0123456789ABCDEF",
        "{01234567-89AB-CDEF-0123-456789ABCDEF}",
        "01234567-89AB-CDEF-0123-456789ABCDE",
        "01234567-89AB-CDEF-0123-456789ABCDEF0",
        " 1234567-89AB-CDEF-0123-456789ABCDEF",
        "01234567-89AB-CDEF-0123-456789ABCDEG",
        "0123456-789AB-CDEF-0123-456789ABCDEF",
        "01234567_89AB_CDEF_0123_456789ABCDEF",
        "01234567-89AB-CDEF-0123-456789ABCD-F",
        "+1234567-89AB-CDEF-0123-456789ABCDEF",
        "0x234567-89AB-CDEF-0123-456789ABCDEF",
    };
    for (const std::string& text : malformed) {
        EXPECT_FALSE(UUID::parse(text)) << text;
    }
}

TEST(UUID, randomOnesAreMarkedAsRandomAndDiffer) {
    std::unordered_set<UUID> seen;
    for (int i = 0; i < 1000; ++i) {
        const UUID uuid = UUID::random();
        const std::string text = uuid.text();
        EXPECT_EQ(text[14], '4') << text;
        EXPECT_NE(std::string("89AB").find(text[19]), std::string::npos) << text;
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 1000U);
}

RC_GTEST_PROP(UUID, everyOneIsReadBackFromBothItsTexts, ()) {
    UUID uuid;
    for (auto& byte : uuid.bytes) {
        byte = *rc::gen::arbitrary<std::uint8_t>();
    }
    RC_ASSERT(UUID::parse(uuid.text()) == uuid);
    RC_ASSERT(UUID::parse(uuid.lowercaseText()) == uuid);
}

}  // namespace
}  // namespace lumatile
