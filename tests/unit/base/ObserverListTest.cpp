#include "base/ObserverList.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace lumatile {
namespace {

using Strings = ObserverList<const std::string&>;
using Plain = ObserverList<>;

static_assert(!std::is_copy_constructible_v<Plain::Subscription>);
static_assert(std::is_nothrow_move_constructible_v<Plain::Subscription>);
static_assert(std::is_nothrow_move_assignable_v<Plain::Subscription>);

/// An observer that writes down its name.
std::function<void()> note(std::string& heard, char name) {
    return [&heard, name] { heard += name; };
}

TEST(ObserverList, tellsEveryoneInTheOrderInWhichTheyCame) {
    Strings list;
    std::vector<std::string> heard;
    const auto first = list.add([&heard](const std::string& text) { heard.push_back("1" + text); });
    const auto second =
        list.add([&heard](const std::string& text) { heard.push_back("2" + text); });
    list.notify("a");
    list.notify("b");
    EXPECT_EQ(heard, (std::vector<std::string>{"1a", "2a", "1b", "2b"}));
}

TEST(ObserverList, everyObserverGetsTheWholeArgument) {
    ObserverList<std::string> list;
    std::vector<std::string> heard;
    const auto take = [&heard](std::string text) { heard.push_back(std::move(text)); };
    const auto first = list.add(take);
    const auto second = list.add(take);
    list.notify("text");
    EXPECT_EQ(heard, (std::vector<std::string>{"text", "text"}));
}

TEST(ObserverList, theEndOfASubscriptionTakesTheObserverOut) {
    Plain list;
    std::string heard;
    const auto first = list.add(note(heard, 'a'));
    {
        const auto second = list.add(note(heard, 'b'));
        list.notify();
    }
    list.notify();
    EXPECT_EQ(heard, "aba");
}

TEST(ObserverList, whatAnObserverHoldsGoesWithItsSubscription) {
    Plain list;
    auto held = std::make_shared<int>(1);
    auto subscription = std::make_optional(list.add([held] { *held += 1; }));
    EXPECT_EQ(held.use_count(), 2);
    subscription.reset();
    EXPECT_EQ(held.use_count(), 1);
}

TEST(ObserverList, aSubscriptionMoves) {
    Plain list;
    std::string heard;
    Plain::Subscription kept;
    {
        Plain::Subscription given = list.add(note(heard, 'a'));
        kept = std::move(given);
    }
    list.notify();
    EXPECT_EQ(heard, "a");
    kept = list.add(note(heard, 'b'));
    list.notify();
    EXPECT_EQ(heard, "ab");
    kept.reset();
    list.notify();
    EXPECT_EQ(heard, "ab");
}

TEST(ObserverList, aSubscriptionMayOutliveTheList) {
    std::string heard;
    auto list = std::make_optional<Plain>();
    Plain::Subscription first = list->add(note(heard, 'a'));
    const Plain::Subscription second = list->add(note(heard, 'b'));
    list->notify();
    list.reset();
    first = Plain::Subscription();
    EXPECT_EQ(heard, "ab");
}

TEST(ObserverList, whoIsTakenOutDuringANotificationIsToldNoMore) {
    Plain list;
    std::string heard;
    Plain::Subscription last;
    const auto first = list.add([&heard, &last] {
        heard += 'a';
        last = Plain::Subscription();
    });
    last = list.add(note(heard, 'b'));
    list.notify();
    list.notify();
    EXPECT_EQ(heard, "aa");
}

TEST(ObserverList, anObserverMayTakeItselfOut) {
    Plain list;
    std::string heard;
    Plain::Subscription own;
    // Longer than what a function keeps inside itself, so that a sanitizer sees an early end.
    own = list.add([&heard, &own, text = std::string(100, 'a')] {
        own = Plain::Subscription();
        heard += text.substr(0, 1);
    });
    const auto second = list.add(note(heard, 'b'));
    list.notify();
    list.notify();
    EXPECT_EQ(heard, "abb");
}

TEST(ObserverList, whoComesDuringANotificationIsToldFromTheNextOneOn) {
    Plain list;
    std::string heard;
    std::vector<Plain::Subscription> added;
    const auto first = list.add([&list, &heard, &added] {
        heard += 'a';
        if (added.empty()) {
            added.push_back(list.add(note(heard, 'b')));
        }
    });
    list.notify();
    EXPECT_EQ(heard, "a");
    list.notify();
    EXPECT_EQ(heard, "aab");
}

TEST(ObserverList, whoTakesThePlaceOfAnotherDuringANotificationWaitsForTheNextOne) {
    Plain list;
    std::string heard;
    Plain::Subscription other;
    bool isReplaced = false;
    const auto first = list.add([&] {
        heard += 'a';
        if (!std::exchange(isReplaced, true)) {
            other = list.add(note(heard, 'c'));
        }
    });
    other = list.add(note(heard, 'b'));
    const auto third = list.add(note(heard, 'd'));
    list.notify();
    EXPECT_EQ(heard, "ad");
    list.notify();
    EXPECT_EQ(heard, "adadc");
}

TEST(ObserverList, anObserverMayNotifyAgain) {
    ObserverList<int> list;
    std::vector<int> heard;
    ObserverList<int>::Subscription last;
    const auto first = list.add([&list, &heard](int depth) {
        heard.push_back(depth);
        if (depth < 2) {
            list.notify(depth + 1);
        }
    });
    last = list.add([&heard, &last](int depth) {
        heard.push_back(10 + depth);
        last = ObserverList<int>::Subscription();  // In the innermost round; the outer ones go on.
    });
    list.notify(0);
    EXPECT_EQ(heard, (std::vector<int>{0, 1, 2, 12}));
    heard.clear();
    list.notify(2);
    EXPECT_EQ(heard, (std::vector<int>{2}));
}

TEST(ObserverList, anObserverMayDestroyTheList) {
    auto list = std::make_optional<Plain>();
    std::string heard;
    const auto first = list->add([&list, &heard, text = std::string(100, 'a')] {
        list.reset();
        heard += text.substr(0, 1);
    });
    const auto second = list->add(note(heard, 'b'));
    list->notify();
    EXPECT_EQ(heard, "a");
}

TEST(ObserverList, whatAnObserverHoldsMayTakeOthersOut) {
    for (const bool isDuringARound : {false, true}) {
        Plain list;
        std::string heard;
        auto inner = std::make_shared<Plain::Subscription>(list.add(note(heard, 'a')));
        auto outer =
            std::make_optional(list.add([kept = std::exchange(inner, nullptr)] { (void)kept; }));
        const auto last = list.add([&] {
            heard += 'c';
            outer.reset();
        });
        if (isDuringARound) {
            list.notify();
            EXPECT_EQ(heard, "ac");
        } else {
            outer.reset();
        }
        heard.clear();
        list.notify();
        EXPECT_EQ(heard, "c");
    }
}

TEST(ObserverList, aListThatHoldsItsOwnSubscriptionsEnds) {
    auto list = std::make_optional<Plain>();
    std::string heard;
    auto first = std::make_shared<Plain::Subscription>(list->add(note(heard, 'a')));
    const auto second = list->add([kept = std::exchange(first, nullptr)] { (void)kept; });
    list->notify();
    list.reset();
    EXPECT_EQ(heard, "a");
}

TEST(ObserverList, anObserverThatThrowsEndsTheRoundAndNotTheList) {
    Plain list;
    std::string heard;
    bool throws = true;
    auto gone = std::make_optional(list.add(note(heard, 'a')));
    const auto second = list.add([&] {
        gone.reset();
        if (std::exchange(throws, false)) {
            throw std::runtime_error("refused");
        }
        heard += 'b';
    });
    EXPECT_THROW(list.notify(), std::runtime_error);
    list.notify();
    EXPECT_EQ(heard, "ab");
}

}  // namespace
}  // namespace lumatile
