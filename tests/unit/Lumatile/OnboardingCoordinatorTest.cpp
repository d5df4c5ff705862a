#include "Lumatile/OnboardingCoordinator.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "platform/simulated/SimulatedDesktop.h"

namespace lumatile {
namespace {

class OnboardingCoordinatorTest : public testing::Test {
protected:
    OnboardingCoordinatorTest() {
        desk.accessibility.setTrusted(false);
        model = std::make_shared<OnboardingModel>(
            AccessibilityGrantFlow(desk.accessibility), SystemTiling{},
            OnboardingModel::Surroundings{
                [this](double seconds, std::function<void()> tick) {
                    return std::shared_ptr<void>(desk.runLoop.repeat(seconds, std::move(tick)));
                },
                [this] { return desk.runLoop.now(); }, [](std::string_view) { return true; }});
        coordinator = std::make_shared<OnboardingCoordinator>(model, desk.onboarding, [this] {
            ++completions;
            wasOpenAtCompletion = desk.onboarding.isOpen;
        });
    }

    void grant() {
        desk.accessibility.setTrusted(true);
        desk.advance(OnboardingModel::pollInterval);
    }

    SimulatedDesktop desk;
    std::shared_ptr<OnboardingModel> model;
    std::shared_ptr<OnboardingCoordinator> coordinator;
    int completions = 0;
    bool wasOpenAtCompletion = false;
};

TEST_F(OnboardingCoordinatorTest, theModelStartsWhenTheWindowOpens) {
    EXPECT_FALSE(coordinator->hasWindow());
    EXPECT_FALSE(model->isPolling());
    coordinator->show();
    EXPECT_TRUE(desk.onboarding.isOpen);
    EXPECT_EQ(desk.onboarding.model, model);
    EXPECT_TRUE(model->isPolling());
}

TEST_F(OnboardingCoordinatorTest, shownAgainItIsTheSameWindow) {
    coordinator->show();
    const std::size_t asked = desk.accessibility.trustQuestions();
    coordinator->show();
    EXPECT_EQ(desk.onboarding.windows, 1);
    EXPECT_EQ(desk.onboarding.shown, 2);
    EXPECT_EQ(desk.accessibility.trustQuestions(), asked) << "the poll goes on as it was";
}

TEST_F(OnboardingCoordinatorTest, doneCompletesAndReleasesTheWindow) {
    coordinator->show();
    grant();
    EXPECT_TRUE(desk.onboarding.isOpen) << "the last page is there to be read";
    EXPECT_EQ(completions, 0);
    model->done();
    EXPECT_EQ(completions, 1);
    EXPECT_TRUE(wasOpenAtCompletion);
    EXPECT_FALSE(desk.onboarding.isOpen);
    EXPECT_FALSE(coordinator->hasWindow());
    model->done();
    EXPECT_EQ(completions, 1);
}

TEST_F(OnboardingCoordinatorTest, closedBeforeTheGrantThePollEnds) {
    coordinator->show();
    model->request();
    desk.onboarding.close();
    EXPECT_FALSE(coordinator->hasWindow());
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
    grant();
    EXPECT_EQ(completions, 0);
}

TEST_F(OnboardingCoordinatorTest, closedAndShownAgainItGoesOn) {
    coordinator->show();
    desk.onboarding.close();
    coordinator->show();
    EXPECT_EQ(desk.onboarding.windows, 2);
    EXPECT_TRUE(model->isPolling());
    grant();
    model->done();
    EXPECT_EQ(completions, 1);
}

TEST_F(OnboardingCoordinatorTest, closingTheLastPageCompletesAsWell) {
    coordinator->show();
    grant();
    desk.onboarding.close();
    EXPECT_EQ(completions, 1);
    EXPECT_FALSE(coordinator->hasWindow());
}

TEST_F(OnboardingCoordinatorTest, theCompletionMayLetGoOfTheCoordinator) {
    coordinator = std::make_shared<OnboardingCoordinator>(model, desk.onboarding,
                                                          [this] { coordinator.reset(); });
    coordinator->show();
    grant();
    model->done();
    EXPECT_EQ(coordinator, nullptr);
    EXPECT_FALSE(desk.onboarding.isOpen);
}

TEST_F(OnboardingCoordinatorTest, whatIsHandedOutDoesNothingAfterItsEnd) {
    coordinator->show();
    model->request();
    coordinator.reset();
    EXPECT_FALSE(desk.onboarding.isOpen);
    EXPECT_EQ(desk.runLoop.timerCount(), 0U);
    model->done();
    desk.onboarding.isOpen = true;
    desk.onboarding.close();
    EXPECT_EQ(completions, 0);
}

}  // namespace
}  // namespace lumatile
