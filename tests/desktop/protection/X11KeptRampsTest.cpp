#include "platform/x11/X11KeptRamps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace lumatile {
namespace {

using Items = std::vector<std::uint32_t>;

X11GammaRamp flat(std::size_t size, std::uint16_t value = 7) {
    return {std::vector<std::uint16_t>(X11GammaRamp::channels * size, value)};
}

Items joined(const std::vector<Items>& pieces) {
    Items items;
    for (const Items& piece : pieces) {
        items.insert(items.end(), piece.begin(), piece.end());
    }
    return items;
}

TEST(X11KeptRamps, theFormIsTheOneThatIsWrittenDown) {
    const X11KeptRamps kept{{{0x42, {{1, 2, 3}}}, {0x43, {{4, 5, 6, 7, 8, 9}}}}};
    const Items form = {1, 0x42, 1, 0x00020001, 3, 0x43, 2, 0x00050004, 0x00070006, 0x00090008};
    ASSERT_TRUE(kept.encoded());
    EXPECT_EQ(joined(*kept.encoded()), form);
    EXPECT_EQ(X11KeptRamps::decoded(form), kept);
}

RC_GTEST_PROP(X11KeptRamps, whatIsWrittenIsReadBack, ()) {
    X11KeptRamps kept;
    const int count = *rc::gen::inRange(0, 5);
    for (int i = 0; i < count; ++i) {
        const auto size = static_cast<std::size_t>(*rc::gen::inRange(1, 40));
        kept.ramps[*rc::gen::arbitrary<std::uint32_t>()] = {
            *rc::gen::container<std::vector<std::uint16_t>>(X11GammaRamp::channels * size,
                                                            rc::gen::arbitrary<std::uint16_t>())};
    }
    const auto pieces = kept.encoded();
    RC_ASSERT(pieces.has_value());
    RC_ASSERT(X11KeptRamps::decoded(joined(*pieces)) == kept);
}

RC_GTEST_PROP(X11KeptRamps, aFormCutShortIsAnotherOneOrNone, ()) {
    const X11KeptRamps kept{{{1, flat(5)}, {2, flat(6)}}};
    Items form = joined(*kept.encoded());
    form.resize(*rc::gen::inRange<std::size_t>(0, form.size()));
    const auto read = X11KeptRamps::decoded(form);
    if (!read) {
        return;
    }
    // Whole ramps may be missing at the end: the property grows by one ramp at a time.
    for (const auto& [controller, ramp] : read->ramps) {
        RC_ASSERT(kept.ramps.at(controller) == ramp);
    }
    RC_ASSERT(joined(*read->encoded()) == form);
}

TEST(X11KeptRamps, everythingElseIsRefusedWhole) {
    const Items good = {1, 0x42, 1, 0x00020001, 3};
    ASSERT_TRUE(X11KeptRamps::decoded(good));
    const std::vector<Items> bad = {
        {},
        {0},
        {2, 0x42, 1, 0x00020001, 3},                         // Of another version.
        {1, 0x42},                                           // Nothing but a number.
        {1, 0x42, 1, 0x00020001},                            // Too short.
        {1, 0x42, 1, 0x00020001, 3, 0x43},                   // A second one that is none.
        {1, 0x42, 1, 0x00020001, 0x00010003},                // More than the ramp holds.
        {1, 0x42, 0},                                        // An empty ramp.
        {1, 0x42, 0xffffffff, 0x00020001, 3},                // A size beyond all bounds.
        {1, 0x42, 1, 0x00020001, 3, 0x42, 1, 0x00020001, 3}  // The same controller twice.
    };
    for (const Items& items : bad) {
        EXPECT_EQ(X11KeptRamps::decoded(items), std::nullopt) << testing::PrintToString(items);
    }
}

TEST(X11KeptRamps, theLargestFits) {
    X11KeptRamps kept;
    for (std::uint32_t i = 0; i < X11KeptRamps::mostControllers; ++i) {
        kept.ramps[i] = flat(X11GammaRamp::largestSize);
    }
    const auto pieces = kept.encoded();
    ASSERT_TRUE(pieces);
    // The smallest limit on a request that a server may have, less the request's own head.
    constexpr std::size_t longestPiece = 65535 - 6;
    for (const Items& piece : *pieces) {
        EXPECT_LE(piece.size(), longestPiece);
    }
    const Items form = joined(*pieces);
    EXPECT_EQ(form.size(), X11KeptRamps::longestForm);
    EXPECT_EQ(X11KeptRamps::decoded(form), kept);
}

TEST(X11KeptRamps, whatIsBeyondTheBoundsIsNeitherWrittenNorRead) {
    X11KeptRamps tooMany;
    for (std::uint32_t i = 0; i <= X11KeptRamps::mostControllers; ++i) {
        tooMany.ramps[i] = flat(1);
    }
    EXPECT_EQ(tooMany.encoded(), std::nullopt);
    EXPECT_EQ((X11KeptRamps{{{1, flat(X11GammaRamp::largestSize + 1)}}}.encoded()), std::nullopt);
    EXPECT_EQ((X11KeptRamps{{{1, {}}}}.encoded()), std::nullopt);
    EXPECT_EQ((X11KeptRamps{{{1, {{1, 2}}}}}.encoded()), std::nullopt);

    Items form = {1};
    for (std::uint32_t i = 0; i <= X11KeptRamps::mostControllers; ++i) {
        form.insert(form.end(), {i, 1, 0x00020001, 3});
    }
    EXPECT_EQ(X11KeptRamps::decoded(form), std::nullopt);
    Items large = {1, 0x42, X11GammaRamp::largestSize + 1};
    large.resize(large.size() + (X11GammaRamp::channels * (X11GammaRamp::largestSize + 1) + 1) / 2);
    EXPECT_EQ(X11KeptRamps::decoded(large), std::nullopt);
}

}  // namespace
}  // namespace lumatile
