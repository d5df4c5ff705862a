#include "Lumatile/OnboardingAdvice.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "commands/CommandStore.h"

namespace lumatile {
namespace {

class OnboardingAdviceTest : public testing::Test {
protected:
    std::vector<UUID> refusedWhere(const std::function<bool(const SnapCommand&)>& isRefused) {
        std::vector<UUID> refused;
        for (const SnapCommand& command : bindings) {
            if (isRefused(command)) {
                refused.push_back(command.id);
            }
        }
        return refused;
    }

    const std::vector<SnapCommand> bindings = CommandStore().hotkeyBindings();
};

TEST_F(OnboardingAdviceTest, nothingIsAddedWhereTheNamedKeysWork) {
    EXPECT_EQ(onboardingAdvice(bindings, {}), std::nullopt);
    const auto quarters = refusedWhere([](const auto& each) { return each.group == "quarters"; });
    ASSERT_EQ(quarters.size(), 4U);
    EXPECT_EQ(onboardingAdvice(bindings, quarters), std::nullopt);
}

TEST_F(OnboardingAdviceTest, theFirstThatWorksIsNamed) {
    EXPECT_EQ(onboardingAdvice(bindings, {bindings.front().id}),
              (OnboardingModel::Advice{"⌃⌥→", "Right Half"}));
    EXPECT_EQ(onboardingAdvice(
                  bindings, refusedWhere([](const auto& each) { return each.group == "halves"; })),
              (OnboardingModel::Advice{"⌃⌥U", "Top Left"}));
}

TEST_F(OnboardingAdviceTest, whereNoneWorksItSaysSo) {
    EXPECT_EQ(onboardingAdvice(bindings, refusedWhere([](const auto&) { return true; })),
              OnboardingModel::Advice{});
}

}  // namespace
}  // namespace lumatile
