#include "Lumatile/highlight/HighlightFade.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <vector>

#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedRunLoop.h"

namespace lumatile {
namespace {

// Alphas are compared to 1e-4: a clock in seconds since 1970 has steps of 0.2 µs.

class HighlightFadeTest : public testing::Test {
protected:
    SimulatedClock clock_;
    SimulatedRunLoop runLoop_{clock_};
    std::vector<double> alphas_;
    int cleared_ = 0;
    HighlightFade fade_{runLoop_, [this](double alpha) { alphas_.push_back(alpha); },
                        [this] { ++cleared_; }};
};

TEST_F(HighlightFadeTest, goesInWithinTwelveHundredths) {
    fade_.fadeIn();
    EXPECT_EQ(fade_.alpha(), 0) << "it does not jump";
    runLoop_.advance(0.06);
    EXPECT_NEAR(fade_.alpha(), 0.5, 1e-4);
    runLoop_.advance(0.055);
    EXPECT_LT(fade_.alpha(), 1);
    runLoop_.advance(0.006);
    EXPECT_EQ(fade_.alpha(), 1);
    EXPECT_EQ(alphas_.back(), 1);
    EXPECT_GE(alphas_.size(), 7U) << "in steps that nobody sees";
    EXPECT_TRUE(std::is_sorted(alphas_.begin(), alphas_.end()));
    EXPECT_EQ(cleared_, 0);
    EXPECT_EQ(runLoop_.timerCount(), 0U) << "nothing runs once it is there";
}

TEST_F(HighlightFadeTest, goesOutAndSaysSoOnce) {
    fade_.fadeIn();
    runLoop_.advance(1);
    alphas_.clear();
    fade_.fadeOut();
    runLoop_.advance(0.06);
    EXPECT_NEAR(fade_.alpha(), 0.5, 1e-4);
    EXPECT_EQ(cleared_, 0);
    runLoop_.advance(0.061);
    EXPECT_EQ(fade_.alpha(), 0);
    EXPECT_EQ(cleared_, 1);
    EXPECT_TRUE(std::is_sorted(alphas_.begin(), alphas_.end(), std::greater()));
    fade_.fadeOut();
    runLoop_.advance(1);
    EXPECT_EQ(cleared_, 1);
    EXPECT_EQ(runLoop_.timerCount(), 0U);
}

TEST_F(HighlightFadeTest, hidingWhatFadesInEndsCleared) {
    fade_.fadeIn();
    runLoop_.advance(0.06);
    fade_.fadeOut();
    EXPECT_NEAR(fade_.alpha(), 0.5, 1e-4) << "from where it is";
    runLoop_.advance(0.06);
    EXPECT_NEAR(fade_.alpha(), 0.25, 1e-4);
    runLoop_.advance(0.061);
    EXPECT_EQ(fade_.alpha(), 0);
    EXPECT_EQ(cleared_, 1);
    EXPECT_LT(*std::max_element(alphas_.begin(), alphas_.end()), 0.51);
}

TEST_F(HighlightFadeTest, hidingBeforeTheFirstStepEndsClearedToo) {
    fade_.fadeIn();
    fade_.fadeOut();
    runLoop_.advance(0.121);
    EXPECT_EQ(fade_.alpha(), 0);
    EXPECT_EQ(cleared_, 1);
}

TEST_F(HighlightFadeTest, showingWhatFadesOutComesBackFromWhereItIs) {
    fade_.fadeIn();
    runLoop_.advance(1);
    fade_.fadeOut();
    runLoop_.advance(0.09);
    EXPECT_NEAR(fade_.alpha(), 0.25, 1e-4);
    fade_.fadeIn();
    EXPECT_NEAR(fade_.alpha(), 0.25, 1e-4);
    runLoop_.advance(0.06);
    EXPECT_NEAR(fade_.alpha(), 0.625, 1e-4);
    runLoop_.advance(0.061);
    EXPECT_EQ(fade_.alpha(), 1);
    EXPECT_EQ(cleared_, 0);
}

TEST_F(HighlightFadeTest, askingAgainDoesNotStartAnew) {
    fade_.fadeIn();
    runLoop_.advance(0.09);
    fade_.fadeIn();
    runLoop_.advance(0.031);
    EXPECT_EQ(fade_.alpha(), 1);
}

TEST_F(HighlightFadeTest, hidingWhatIsNotShownDoesNothing) {
    fade_.fadeOut();
    runLoop_.advance(1);
    EXPECT_TRUE(alphas_.empty());
    EXPECT_EQ(cleared_, 0);
}

TEST_F(HighlightFadeTest, lateTicksDoNotMakeItLonger) {
    fade_.fadeIn();
    // The program was busy for most of the time.
    clock_.elapseTo(clock_.sinceStart() + SimulatedClock::fromSeconds(0.119));
    runLoop_.advance(0.016);
    EXPECT_EQ(fade_.alpha(), 1);
}

TEST_F(HighlightFadeTest, aClockSetBackDoesNotStopIt) {
    fade_.fadeIn();
    clock_.jump(-3600);
    runLoop_.advance(0.121);
    EXPECT_EQ(fade_.alpha(), 1);
    fade_.fadeOut();
    clock_.jump(3600);
    runLoop_.advance(0.121);
    EXPECT_EQ(fade_.alpha(), 0);
    EXPECT_EQ(cleared_, 1);
}

TEST_F(HighlightFadeTest, takesOneStepWhereNothingIsBlended) {
    fade_.isBlended = false;
    fade_.fadeIn();
    runLoop_.advance(0.119);
    EXPECT_TRUE(alphas_.empty());
    runLoop_.advance(0.002);
    EXPECT_EQ(alphas_, std::vector<double>{1});
    fade_.fadeOut();
    runLoop_.advance(0.119);
    EXPECT_EQ(cleared_, 0);
    runLoop_.advance(0.002);
    EXPECT_EQ(alphas_, (std::vector<double>{1, 0}));
    EXPECT_EQ(cleared_, 1);
    EXPECT_EQ(runLoop_.timerCount(), 0U);
}

TEST_F(HighlightFadeTest, mayBeTurnedRoundByItsOwnEnd) {
    std::vector<double> seen;
    HighlightFade* self = nullptr;
    HighlightFade fade(
        runLoop_, [&](double alpha) { seen.push_back(alpha); }, [&] { self->fadeIn(); });
    self = &fade;
    fade.fadeIn();
    fade.fadeOut();
    runLoop_.advance(0.3);
    EXPECT_EQ(fade.alpha(), 1);
}

}  // namespace
}  // namespace lumatile
