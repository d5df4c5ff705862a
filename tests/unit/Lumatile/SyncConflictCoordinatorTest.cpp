#include "Lumatile/SyncConflictCoordinator.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

#include "platform/simulated/SimulatedConflictPrompt.h"

namespace lumatile {
namespace {

constexpr ConflictSummary first{100, 200};
constexpr ConflictSummary second{300, 200};

class SyncConflictCoordinatorTest : public testing::Test {
protected:
    SyncConflictCoordinator::Completion completion() {
        return [this](bool preferLocal) {
            choices.push_back(preferLocal);
            wasOpenAtChoice = prompt.shown.has_value();
        };
    }

    SimulatedConflictPrompt prompt;
    std::unique_ptr<SyncConflictCoordinator> coordinator =
        std::make_unique<SyncConflictCoordinator>(prompt);
    std::vector<bool> choices;
    bool wasOpenAtChoice = false;
};

TEST_F(SyncConflictCoordinatorTest, hasNoWindowBeforeThereIsAConflict) {
    EXPECT_FALSE(coordinator->hasWindow());
    EXPECT_EQ(prompt.windows, 0);
}

TEST_F(SyncConflictCoordinatorTest, theChoiceIsHandedOnOnceAfterTheWindowIsGone) {
    for (const bool preferLocal : {true, false}) {
        choices.clear();
        coordinator->present(first, completion());
        EXPECT_EQ(prompt.shown, first);
        prompt.choose(preferLocal);
        EXPECT_EQ(choices, std::vector<bool>{preferLocal});
        EXPECT_FALSE(wasOpenAtChoice);
        EXPECT_FALSE(coordinator->hasWindow());
        prompt.choose(preferLocal);
        EXPECT_EQ(choices.size(), 1U);
    }
}

TEST_F(SyncConflictCoordinatorTest, closingDecidesNothingAndTheNextConflictShowsItAgain) {
    coordinator->present(first, completion());
    prompt.close();
    EXPECT_TRUE(choices.empty());
    EXPECT_FALSE(coordinator->hasWindow());
    coordinator->present(first, completion());
    EXPECT_EQ(prompt.windows, 2);
    prompt.choose(true);
    EXPECT_EQ(choices, std::vector<bool>{true});
}

TEST_F(SyncConflictCoordinatorTest, whileItIsShownTheOneWindowIsUpdated) {
    int earlier = 0;
    coordinator->present(first, [&](bool) { ++earlier; });
    coordinator->present(second, completion());
    EXPECT_EQ(prompt.windows, 1);
    EXPECT_EQ(prompt.shown, second);
    prompt.choose(false);
    EXPECT_EQ(earlier, 0);
    EXPECT_EQ(choices, std::vector<bool>{false});
}

TEST_F(SyncConflictCoordinatorTest, theCompletionMayPresentTheNextConflict) {
    coordinator->present(first, [&](bool) { coordinator->present(second, completion()); });
    prompt.choose(true);
    EXPECT_EQ(prompt.shown, second);
    prompt.choose(false);
    EXPECT_EQ(choices, std::vector<bool>{false});
}

TEST_F(SyncConflictCoordinatorTest, withoutACompletionAChoiceOnlyClosesIt) {
    coordinator->present(first, nullptr);
    prompt.choose(true);
    EXPECT_EQ(prompt.shown, std::nullopt);
}

TEST_F(SyncConflictCoordinatorTest, theWindowGoesWithItAndNothingIsCalledAfterwards) {
    coordinator->present(first, completion());
    coordinator.reset();
    EXPECT_EQ(prompt.shown, std::nullopt);
    prompt.shown = first;
    prompt.choose(true);
    prompt.close();
    EXPECT_TRUE(choices.empty());
}

}  // namespace
}  // namespace lumatile
