#include "onboarding/OnboardingModel.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

constexpr const char* paneAddress =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

/// A session that does not let the program control windows yet, and the model in it.
class OnboardingModelTest : public testing::Test {
protected:
    OnboardingModelTest() {
        desk.accessibility.setTrusted(false);
        make();
    }

    void make() {
        model = std::make_shared<OnboardingModel>(
            AccessibilityGrantFlow(desk.accessibility), SystemTiling{true, false},
            OnboardingModel::Surroundings{
                [this](double seconds, std::function<void()> tick) {
                    intervals.push_back(seconds);
                    return std::shared_ptr<void>(desk.runLoop.repeat(seconds, std::move(tick)));
                },
                [this] { return desk.runLoop.now(); },
                [this](std::string_view address) { return desk.workspace.open(address); }});
        model->onGranted = [this] { ++granted; };
        model->onDone = [this] { ++done; };
        model->onChange([this] { told.push_back(model->state()); });
    }

    const std::vector<std::string>& opened() const { return desk.workspace.addresses; }

    SimulatedDesktop desk;
    std::shared_ptr<OnboardingModel> model;
    std::vector<double> intervals;
    std::vector<GrantState> told;
    int granted = 0;
    int done = 0;
};

TEST_F(OnboardingModelTest, beginsWithNothingAskedAndNoTimer) {
    EXPECT_EQ(model->state(), GrantState::requesting);
    EXPECT_EQ(model->tiling(), (SystemTiling{true, false}));
    EXPECT_FALSE(model->didRequest());
    EXPECT_FALSE(model->isPolling());
    EXPECT_FALSE(model->isFollowingRequest());
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
    EXPECT_EQ(desk.accessibility.trustQuestions(), 0U);
}

TEST_F(OnboardingModelTest, looksAtOnceAndThenEvery800Milliseconds) {
    model->start();
    EXPECT_EQ(intervals, std::vector<double>{0.8});
    EXPECT_EQ(desk.accessibility.trustQuestions(), 1U);
    desk.advance(0.79);
    EXPECT_EQ(desk.accessibility.trustQuestions(), 1U);
    desk.advance(0.02);
    EXPECT_EQ(desk.accessibility.trustQuestions(), 2U);
    desk.advance(8);
    EXPECT_EQ(desk.accessibility.trustQuestions(), 12U);
    EXPECT_EQ(desk.accessibility.promptsShown(), 0U) << "looking asks the user nothing";
}

TEST_F(OnboardingModelTest, aSecondStartReplacesTheTimer) {
    model->start();
    model->start();
    EXPECT_EQ(desk.runLoop.timerCount(), 1U);
}

TEST_F(OnboardingModelTest, observersAreToldOnlyOfAnotherState) {
    model->start();
    desk.advance(20);
    EXPECT_TRUE(told.empty());
    model->request();
    EXPECT_TRUE(told.empty()) << "the next look tells";
    desk.advance(20);
    EXPECT_EQ(told, std::vector<GrantState>{GrantState::waiting});
}

TEST_F(OnboardingModelTest, theRequestShowsThePromptAndTheNextLookWaits) {
    model->start();
    model->request();
    EXPECT_TRUE(model->didRequest());
    EXPECT_EQ(desk.accessibility.promptsShown(), 1U);
    EXPECT_EQ(model->state(), GrantState::requesting);
    EXPECT_EQ(intervals, (std::vector<double>{0.8, 0.25}));
    desk.advance(0.81);
    EXPECT_EQ(model->state(), GrantState::waiting);
}

TEST_F(OnboardingModelTest, withoutAPromptTheSettingsOpenAfterOneAndAHalfSeconds) {
    model->start();
    model->request();
    // 1.5 seconds have to be over.
    desk.advance(1.5);
    EXPECT_TRUE(opened().empty());
    desk.advance(0.25);
    EXPECT_EQ(opened(), std::vector<std::string>{paneAddress});
    EXPECT_FALSE(model->isFollowingRequest());
    desk.advance(30);
    EXPECT_EQ(opened().size(), 1U);
}

TEST_F(OnboardingModelTest, aPromptIsWaitedForHoweverLongItStays) {
    desk.accessibility.hasPrompt = true;
    model->start();
    model->request();
    desk.advance(60);
    EXPECT_TRUE(opened().empty());
    desk.accessibility.isPromptOnScreen = false;
    desk.advance(0.25);
    EXPECT_EQ(opened(), std::vector<std::string>{paneAddress});
    EXPECT_EQ(model->state(), GrantState::waiting);
}

TEST_F(OnboardingModelTest, aPromptThatComesLateCounts) {
    model->start();
    model->request();
    desk.advance(1.1);
    desk.accessibility.isPromptOnScreen = true;
    desk.advance(5);
    EXPECT_TRUE(opened().empty());
}

TEST_F(OnboardingModelTest, anotherRequestBeginsToWaitAnew) {
    model->start();
    model->request();
    desk.advance(1.25);
    model->request();
    EXPECT_EQ(desk.runLoop.timerCount(), 2U);
    desk.advance(1.5);
    EXPECT_TRUE(opened().empty());
    desk.advance(0.25);
    EXPECT_EQ(opened().size(), 1U);
}

TEST_F(OnboardingModelTest, noSettingsAreOpenedOnceThePermissionIsThere) {
    model->start();
    model->request();
    desk.advance(0.1);
    desk.accessibility.setTrusted(true);
    desk.advance(0.2);
    EXPECT_FALSE(model->isFollowingRequest()) << "the poll does the rest";
    EXPECT_EQ(granted, 0);
    desk.advance(10);
    EXPECT_TRUE(opened().empty());
    EXPECT_EQ(granted, 1);
}

TEST_F(OnboardingModelTest, thePermissionEndsBothTimersAndIsToldOnce) {
    desk.accessibility.hasPrompt = true;
    model->start();
    model->request();
    desk.advance(0.79);
    desk.accessibility.setTrusted(true);
    desk.advance(0.02);
    EXPECT_EQ(model->state(), GrantState::granted);
    EXPECT_EQ(told, std::vector<GrantState>{GrantState::granted});
    EXPECT_EQ(granted, 1);
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
    desk.advance(60);
    EXPECT_EQ(granted, 1);
    EXPECT_EQ(done, 0);
}

TEST_F(OnboardingModelTest, aGrantFromElsewhereIsSeenWithoutARequest) {
    model->start();
    desk.advance(5);
    desk.accessibility.setTrusted(true);
    desk.advance(0.8);
    EXPECT_EQ(model->state(), GrantState::granted);
    EXPECT_FALSE(model->didRequest());
}

TEST_F(OnboardingModelTest, aPermissionThatIsThereAlreadyIsSeenAtOnce) {
    desk.accessibility.setTrusted(true);
    model->start();
    EXPECT_EQ(model->state(), GrantState::granted);
    EXPECT_EQ(granted, 1);
    EXPECT_FALSE(model->isPolling());
}

TEST_F(OnboardingModelTest, aDeniedRequestGoesOnWaiting) {
    desk.accessibility.hasPrompt = true;
    model->start();
    model->request();
    desk.accessibility.isPromptOnScreen = false;
    desk.advance(3600);
    EXPECT_EQ(model->state(), GrantState::waiting);
    EXPECT_TRUE(model->isPolling());
    desk.accessibility.setTrusted(true);
    desk.advance(0.8);
    EXPECT_EQ(model->state(), GrantState::granted);
}

TEST_F(OnboardingModelTest, theSettingsAreOpenedAgainDirectly) {
    model->openSettings();
    EXPECT_EQ(opened(), std::vector<std::string>{paneAddress});
    EXPECT_EQ(model->missing(), std::nullopt);
}

TEST_F(OnboardingModelTest, whatIsKnownToBeMissingIsToldAtOnce) {
    desk.accessibility.obstacle = TrustObstacle::noWindowManager;
    model->start();
    EXPECT_EQ(model->missing(), TrustObstacle::noWindowManager);
    EXPECT_EQ(model->state(), GrantState::requesting);
    // Where a page of settings opens, that is what the user reads next.
    model->openSettings();
    EXPECT_EQ(model->missing(), std::nullopt);
    desk.advance(8);
    EXPECT_EQ(model->missing(), std::nullopt);
}

TEST_F(OnboardingModelTest, anAdviceIsToldOnce) {
    const OnboardingModel::Advice advice{"⌃⌥U", "Top Left"};
    model->setAdvice(advice);
    model->setAdvice(advice);
    EXPECT_EQ(model->advice(), advice);
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(OnboardingModelTest, whereThereAreNoSettingsItTellsWhatIsMissing) {
    desk.workspace.opensAddresses = false;
    model->start();
    model->request();
    EXPECT_EQ(model->missing(), std::nullopt);
    desk.advance(1.75);
    EXPECT_EQ(model->missing(), TrustObstacle::unknown);
    desk.accessibility.obstacle = TrustObstacle::noWindowManager;
    desk.advance(0.8);
    EXPECT_EQ(model->missing(), TrustObstacle::noWindowManager);
    // It becomes another, and goes with the permission.
    desk.accessibility.obstacle = TrustObstacle::windowManagerRefuses;
    desk.advance(0.8);
    EXPECT_EQ(model->missing(), TrustObstacle::windowManagerRefuses);
    told.clear();
    desk.advance(8);
    EXPECT_TRUE(told.empty());
    desk.accessibility.setTrusted(true);
    desk.advance(0.8);
    EXPECT_EQ(model->missing(), std::nullopt);
}

TEST_F(OnboardingModelTest, stoppingEndsBothTimers) {
    model->start();
    model->request();
    model->stop();
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
    desk.accessibility.setTrusted(true);
    desk.advance(60);
    EXPECT_EQ(granted, 0);
    EXPECT_TRUE(opened().empty());
}

TEST_F(OnboardingModelTest, doneIsHandedOn) {
    model->done();
    EXPECT_EQ(done, 1);
    model->onDone = nullptr;
    model->onGranted = nullptr;
    desk.accessibility.setTrusted(true);
    model->start();
    model->done();
    EXPECT_EQ(done, 1);
}

TEST_F(OnboardingModelTest, theTimersGoWithTheModel) {
    model->start();
    model->request();
    model.reset();
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
    desk.advance(10);
    EXPECT_TRUE(opened().empty());
}

TEST_F(OnboardingModelTest, aTickThatOutlivesTheModelDoesNothing) {
    std::vector<std::function<void()>> ticks;
    auto shortLived = std::make_shared<OnboardingModel>(
        AccessibilityGrantFlow(desk.accessibility), SystemTiling{},
        OnboardingModel::Surroundings{
            [&](double, std::function<void()> tick) {
                ticks.push_back(std::move(tick));
                return std::make_shared<int>();
            },
            [] { return 0.0; },
            [this](std::string_view address) { return desk.workspace.open(address); }});
    shortLived->start();
    shortLived->request();
    shortLived.reset();
    const std::size_t asked = desk.accessibility.trustQuestions();
    ASSERT_EQ(ticks.size(), 2U);
    for (const auto& tick : ticks) {
        tick();
    }
    EXPECT_EQ(desk.accessibility.trustQuestions(), asked);
}

TEST_F(OnboardingModelTest, whoeverIsToldMayLetGoOfTheModel) {
    model->onGranted = [this] {
        ++granted;
        model.reset();
    };
    model->onChange(nullptr);
    desk.accessibility.setTrusted(true);
    model->start();
    EXPECT_EQ(granted, 1);
    make();
    model->onDone = [this] { model.reset(); };
    model->done();
    EXPECT_EQ(model, nullptr);
}

}  // namespace
}  // namespace lumatile
