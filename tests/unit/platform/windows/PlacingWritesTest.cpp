#include "platform/windows/PlacingWrites.h"

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/unit/platform/windows/NumberedElement.h"
#include "windows/AttributeName.h"

namespace lumatile {
namespace {

constexpr double farthest = 1000;

class PlacingWritesTest : public testing::Test {
protected:
    struct Placed {
        int window;
        PlacingWish wish;
    };

    bool writePosition(int window, const Point& position) {
        return writes.write(NumberedElement::of(window), AttributeName::position,
                            AttributeValue(position));
    }
    bool writeSize(int window, const Size& size) {
        return writes.write(NumberedElement::of(window), AttributeName::size, AttributeValue(size));
    }

    std::vector<Placed> placed;
    bool takes = true;
    std::vector<std::size_t> together;  // How many windows went at once.
    PlacingWrites writes{farthest, [this](const std::vector<PlacingWrites::Placement>& placements) {
                             together.push_back(placements.size());
                             for (const auto& [window, wish] : placements) {
                                 placed.push_back({numberOf(window), wish});
                             }
                             return takes;
                         }};
};

TEST_F(PlacingWritesTest, aWriteAloneIsPlacedAtOnceAndAnswersWhatBecameOfIt) {
    EXPECT_TRUE(writePosition(1, {5, 6}));
    ASSERT_EQ(placed.size(), 1U);
    EXPECT_EQ(placed[0].window, 1);
    EXPECT_EQ(placed[0].wish.position, (Point{5, 6}));
    EXPECT_FALSE(placed[0].wish.size);
    takes = false;
    EXPECT_FALSE(writeSize(1, {50, 60}));
}

TEST_F(PlacingWritesTest, joinedWritesAreOneChangeWithWhatWasAskedLast) {
    writes.begin(NumberedElement::of(1));
    EXPECT_TRUE(writePosition(1, {5, 6}));
    EXPECT_TRUE(writeSize(1, {50, 60}));
    EXPECT_TRUE(writePosition(1, {7, 8}));
    EXPECT_TRUE(placed.empty());
    writes.end();
    ASSERT_EQ(placed.size(), 1U);
    EXPECT_EQ(placed[0].wish.position, (Point{7, 8}));
    EXPECT_EQ(placed[0].wish.size, (Size{50, 60}));
}

TEST_F(PlacingWritesTest, anotherWindowsWriteAndALookComeAfterWhatWasJoined) {
    writes.begin(NumberedElement::of(1));
    writePosition(1, {5, 6});
    writePosition(2, {7, 8});
    ASSERT_EQ(placed.size(), 2U);
    EXPECT_EQ(placed[0].window, 1);
    EXPECT_EQ(placed[1].window, 2);
    writeSize(1, {50, 60});
    EXPECT_EQ(placed.size(), 2U);
    writes.carryOut();
    EXPECT_EQ(placed.size(), 3U);
    writes.end();
    EXPECT_EQ(placed.size(), 3U);
}

TEST_F(PlacingWritesTest, joiningAnotherWindowEndsTheFirst) {
    writes.begin(NumberedElement::of(1));
    writePosition(1, {5, 6});
    writes.begin(NumberedElement::of(2));
    ASSERT_EQ(placed.size(), 1U);
    writePosition(1, {7, 8});
    EXPECT_EQ(placed.size(), 2U);
}

TEST_F(PlacingWritesTest, endingWithoutAWriteAsksForNothing) {
    writes.begin(NumberedElement::of(1));
    writes.end();
    EXPECT_TRUE(placed.empty());
}

TEST_F(PlacingWritesTest, theWritesOfABatchGoTogetherEachWindowOnce) {
    writes.beginBatch();
    EXPECT_TRUE(writePosition(1, {5, 6}));
    EXPECT_TRUE(writePosition(2, {7, 8}));
    writes.begin(NumberedElement::of(3));
    EXPECT_TRUE(writePosition(3, {1, 1}));
    EXPECT_TRUE(writeSize(3, {50, 60}));
    EXPECT_TRUE(writePosition(3, {2, 2}));
    writes.end();
    EXPECT_TRUE(writePosition(1, {9, 9}));
    EXPECT_TRUE(placed.empty());
    writes.endBatch();
    EXPECT_EQ(together, (std::vector<std::size_t>{3}));
    ASSERT_EQ(placed.size(), 3U);
    EXPECT_EQ(placed[0].window, 1);
    EXPECT_EQ(placed[0].wish.position, (Point{9, 9}));
    EXPECT_EQ(placed[1].window, 2);
    EXPECT_EQ(placed[2].wish.position, (Point{2, 2}));
    EXPECT_EQ(placed[2].wish.size, (Size{50, 60}));
    writePosition(1, {5, 6});
    EXPECT_EQ(together.size(), 2U) << "after the batch each is placed at once";
}

TEST_F(PlacingWritesTest, aLookAtAWindowWaitsForABatchThatHoldsIt) {
    writes.beginBatch();
    writePosition(1, {5, 6});
    writePosition(2, {7, 8});
    writes.carryOut(NumberedElement::of(3));
    EXPECT_TRUE(placed.empty()) << "nothing was put off for that window";
    writes.carryOut(NumberedElement::of(2));
    EXPECT_EQ(together, (std::vector<std::size_t>{2}));
    writePosition(2, {9, 9});
    EXPECT_EQ(placed.size(), 2U) << "the batch goes on";
    writes.endBatch();
    EXPECT_EQ(together, (std::vector<std::size_t>{2, 1}));
}

TEST_F(PlacingWritesTest, aBatchWithoutAWriteAsksForNothing) {
    writes.beginBatch();
    EXPECT_FALSE(writePosition(1, {farthest + 1, 0})) << "told at once";
    writes.endBatch();
    EXPECT_TRUE(together.empty());
}

TEST_F(PlacingWritesTest, refusesOtherAttributesAndOtherValues) {
    const Element window = NumberedElement::of(1);
    EXPECT_FALSE(writes.write(window, AttributeName::minimized, AttributeValue(true)));
    EXPECT_FALSE(writes.write(window, AttributeName::position, AttributeValue(Size{1, 2})));
    EXPECT_FALSE(writes.write(window, AttributeName::size, AttributeValue(Point{1, 2})));
    EXPECT_FALSE(writes.write(window, AttributeName::size, AttributeValue(std::string("1 2"))));
    EXPECT_TRUE(placed.empty());
}

TEST_F(PlacingWritesTest, refusesNumbersThatNobodyCouldBeAskedFor) {
    EXPECT_FALSE(writePosition(1, {std::numeric_limits<double>::quiet_NaN(), 0}));
    EXPECT_FALSE(writePosition(1, {0, farthest + 1}));
    EXPECT_FALSE(writeSize(1, {std::numeric_limits<double>::infinity(), 10}));
    EXPECT_FALSE(writeSize(1, {10, farthest + 1}));
    EXPECT_TRUE(placed.empty());
}

TEST(PlacingWrites, whoeverEndsThemWhileTheyArePlacedEndsThemOnce) {
    int calls = 0;
    PlacingWrites* all = nullptr;
    PlacingWrites writes{farthest, [&](const std::vector<PlacingWrites::Placement>& placements) {
                             ++calls;
                             all->end();
                             all->endBatch();
                             return placements.size() == 1;
                         }};
    all = &writes;
    writes.begin(NumberedElement::of(1));
    writes.write(NumberedElement::of(1), AttributeName::position, AttributeValue(Point{1, 2}));
    writes.end();
    EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace lumatile
