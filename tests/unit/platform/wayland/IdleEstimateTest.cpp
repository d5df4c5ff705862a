#include "platform/wayland/IdleEstimate.h"

#include <gtest/gtest.h>

namespace lumatile {
namespace {

TEST(IdleEstimate, countsFromAPauseThatIsTold) {
    IdleEstimate estimate;
    EXPECT_EQ(estimate.seconds(100), 0);
    estimate.noteIdled(102);
    EXPECT_EQ(estimate.seconds(102), 2);
    EXPECT_EQ(estimate.seconds(400), 300);
    estimate.noteResumed();
    EXPECT_EQ(estimate.seconds(400), 0);
}

TEST(IdleEstimate, asksNowAndThenWhileNoPauseIsTold) {
    IdleEstimate estimate;
    ASSERT_TRUE(estimate.wantsToAsk(100));
    estimate.noteAsked();
    EXPECT_FALSE(estimate.wantsToAsk(100));
    estimate.noteArrived(100.1);
    estimate.noteAnswered(100.2);
    // Someone uses the computer.
    EXPECT_EQ(estimate.seconds(109), 0);
    EXPECT_FALSE(estimate.wantsToAsk(110));
    EXPECT_TRUE(estimate.wantsToAsk(110.3));
}

TEST(IdleEstimate, isAbsentWhileTheAnswerIsKeptBack) {
    IdleEstimate estimate;
    estimate.noteAsked();
    // A compositor that hangs keeps nothing back.
    EXPECT_EQ(estimate.seconds(200), 0);
    estimate.noteArrived(200);
    EXPECT_EQ(estimate.seconds(200.5), 0);
    EXPECT_EQ(estimate.seconds(201), std::nullopt);
    EXPECT_EQ(estimate.seconds(9000), std::nullopt);
    EXPECT_FALSE(estimate.wantsToAsk(9000));
    estimate.noteAnswered(9001);
    EXPECT_EQ(estimate.seconds(9001), 0);
}

TEST(IdleEstimate, needsNoAnswerOnceAPauseIsTold) {
    IdleEstimate estimate;
    estimate.noteAsked();
    estimate.noteArrived(100);
    estimate.noteIdled(102);
    EXPECT_EQ(estimate.seconds(103), 3);
    estimate.noteResumed();
    EXPECT_EQ(estimate.seconds(104), 0);
    EXPECT_TRUE(estimate.wantsToAsk(104));
}

TEST(IdleEstimate, asksNothingInAPauseUntilScreensAreDarkened) {
    IdleEstimate estimate;
    estimate.darkensAfter = 60;
    estimate.noteIdled(100);  // The pause began at 98.
    EXPECT_FALSE(estimate.wantsToAsk(155.4));
    EXPECT_TRUE(estimate.wantsToAsk(155.5));
    estimate.darkensAfter = 30;
    EXPECT_TRUE(estimate.wantsToAsk(130));
}

TEST(IdleEstimate, darkensNothingBeforeTheAnswer) {
    IdleEstimate estimate;
    estimate.darkensAfter = 60;
    estimate.noteIdled(100);
    EXPECT_EQ(estimate.seconds(157), 59);
    EXPECT_EQ(estimate.seconds(170), 60);
    estimate.noteAsked();
    estimate.noteArrived(170);
    EXPECT_EQ(estimate.seconds(170.5), 60);
    estimate.noteAnswered(170.6);
    EXPECT_EQ(estimate.seconds(171), 73);
}

TEST(IdleEstimate, findsOutInTheDarkThatSomethingIsToBeSeen) {
    IdleEstimate estimate;
    estimate.darkensAfter = 60;
    estimate.noteIdled(100);
    estimate.noteAsked();
    estimate.noteArrived(156);
    estimate.noteAnswered(156);
    EXPECT_FALSE(estimate.wantsToAsk(157));
    ASSERT_TRUE(estimate.wantsToAsk(158));
    estimate.noteAsked();
    estimate.noteArrived(158);
    EXPECT_EQ(estimate.seconds(158.5), 60.5);
    EXPECT_EQ(estimate.seconds(160), std::nullopt);
    EXPECT_TRUE(estimate.isKeptBack(160));
}

TEST(IdleEstimate, asksAnewInEachPause) {
    IdleEstimate estimate;
    estimate.darkensAfter = 60;
    estimate.noteIdled(100);
    estimate.noteAsked();
    estimate.noteAnswered(156);
    EXPECT_EQ(estimate.seconds(160), 62);
    estimate.noteResumed();
    estimate.noteIdled(170);
    EXPECT_EQ(estimate.seconds(400), 60);
    EXPECT_TRUE(estimate.wantsToAsk(400));
}

}  // namespace
}  // namespace lumatile
