#include "base/Lifeline.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace lumatile {
namespace {

static_assert(!std::is_copy_constructible_v<Lifeline>);
static_assert(!std::is_move_constructible_v<Lifeline>);
static_assert(!std::is_copy_assignable_v<Lifeline>);
static_assert(!std::is_move_assignable_v<Lifeline>);

TEST(Lifeline, passesArgumentsOnWhileTheOwnerIsThere) {
    const Lifeline lifeline;
    std::string heard;
    const auto guarded = lifeline.guard(
        [&heard](const std::string& text, int number) { heard = text + std::to_string(number); });
    guarded("a", 1);
    EXPECT_EQ(heard, "a1");
    guarded("b", 2);
    EXPECT_EQ(heard, "b2");
}

TEST(Lifeline, aCallbackDoesNothingAfterItsOwnersDeath) {
    int calls = 0;
    auto lifeline = std::make_optional<Lifeline>();
    const std::function<void()> guarded = lifeline->guard([&calls] { ++calls; });
    const std::function<void()> copy = guarded;
    guarded();
    copy();
    EXPECT_EQ(calls, 2);
    lifeline.reset();
    guarded();
    copy();
    EXPECT_EQ(calls, 2);
}

TEST(Lifeline, referencesAndMoveOnlyArgumentsArePassedAsTheyAre) {
    const Lifeline lifeline;
    int number = 1;
    lifeline.guard([](int& value) { value = 7; })(number);
    EXPECT_EQ(number, 7);
    std::unique_ptr<int> kept;
    lifeline.guard([&kept](std::unique_ptr<int> value) { kept = std::move(value); })(
        std::make_unique<int>(3));
    ASSERT_TRUE(kept);
    EXPECT_EQ(*kept, 3);
}

TEST(Lifeline, whatReturnsSomethingCanBeGuardedToo) {
    const Lifeline lifeline;
    int calls = 0;
    const std::function<void()> guarded = lifeline.guard([&calls] { return ++calls; });
    guarded();
    EXPECT_EQ(calls, 1);
}

TEST(Lifeline, aGuardedCallableFitsWhereItsOwnArgumentsFit) {
    const Lifeline lifeline;
    const auto guarded = lifeline.guard([](int) {});
    static_assert(std::is_invocable_v<decltype(guarded), int>);
    static_assert(!std::is_invocable_v<decltype(guarded)>);
    static_assert(!std::is_invocable_v<decltype(guarded), std::string>);
    guarded(1);
}

TEST(Lifeline, theOwnerMayDieInItsOwnCallback) {
    struct Owner {
        int calls = 0;
        Lifeline lifeline;
    };
    auto owner = std::make_unique<Owner>();
    int calls = 0;
    const std::function<void()> guarded = owner->lifeline.guard([&owner, &calls] {
        ++calls;
        owner.reset();
    });
    guarded();
    guarded();
    EXPECT_EQ(calls, 1);
}

TEST(Lifeline, aWatchTellsWhetherTheOwnerIsThere) {
    auto lifeline = std::make_optional<Lifeline>();
    const std::vector<Lifeline::Watch> copies(2, lifeline->watch());
    EXPECT_TRUE(copies[0].isAlive());
    EXPECT_TRUE(copies[1].isAlive());
    lifeline.reset();
    EXPECT_FALSE(copies[0].isAlive());
    EXPECT_FALSE(copies[1].isAlive());
}

TEST(Lifeline, aWatchOfNothingIsNotAlive) { EXPECT_FALSE(Lifeline::Watch().isAlive()); }

TEST(Lifeline, eachOwnerHasItsOwn) {
    auto first = std::make_optional<Lifeline>();
    const Lifeline second;
    const Lifeline::Watch ofFirst = first->watch();
    const Lifeline::Watch ofSecond = second.watch();
    first.reset();
    EXPECT_FALSE(ofFirst.isAlive());
    EXPECT_TRUE(ofSecond.isAlive());
}

}  // namespace
}  // namespace lumatile
