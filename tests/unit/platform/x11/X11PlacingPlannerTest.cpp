#include "platform/x11/X11PlacingPlanner.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <vector>

namespace rc {

template <>
struct Arbitrary<lumatile::Rect> {
    static Gen<lumatile::Rect> arbitrary() {
        const auto hundredths = [](int from, int to) {
            return gen::map(gen::inRange(from * 100, to * 100),
                            [](int value) { return value / 100.0; });
        };
        // Wider than any decoration.
        return gen::apply(
            [](double x, double y, double width, double height) {
                return lumatile::Rect{x, y, width, height};
            },
            hundredths(-3000, 3000), hundredths(-3000, 3000), hundredths(150, 4000),
            hundredths(150, 4000));
    }
};

template <>
struct Arbitrary<lumatile::X11Window> {
    static Gen<lumatile::X11Window> arbitrary() {
        const auto extents = [] {
            return gen::apply(
                [](int left, int right, int top, int bottom) {
                    return lumatile::X11Extents{left, right, top, bottom};
                },
                gen::inRange(0, 50), gen::inRange(0, 50), gen::inRange(0, 50), gen::inRange(0, 50));
        };
        return gen::apply(
            [](bool isOwn, const lumatile::X11Extents& around, int x, int y, int width, int height,
               bool isMaximized, bool isShaded) {
                lumatile::X11Window window;
                (isOwn ? window.facts.shadow : window.facts.decoration) = around;
                window.client = {x, y, width, height};
                window.facts.isMaximizedVertically = isMaximized;
                window.facts.isShaded = isShaded;
                return window;
            },
            gen::arbitrary<bool>(), extents(), gen::inRange(-3000, 3000), gen::inRange(-3000, 3000),
            gen::inRange(150, 4000), gen::inRange(150, 4000), gen::arbitrary<bool>(),
            gen::arbitrary<bool>());
    }
};

}  // namespace rc

namespace lumatile {
namespace {

using State = X11StateRequest::State;
using Requests = std::vector<X11WindowRequest>;

constexpr Point noOffset{0, 0};
constexpr X11Extents frame{5, 6, 29, 7};

X11Window decorated(const X11PixelRect& client = {105, 129, 600, 400}) {
    X11Window window;
    window.id = 7;
    window.serial = 1;
    window.client = client;
    window.facts.decoration = frame;
    return window;
}

PlacingWish both(const Rect& rect) { return {rect.origin(), rect.size()}; }

/// What is asked for; empty where nothing is or can be.
Requests requestsFor(const X11Window& window, const PlacingWish& wish,
                     const Point& origin = noOffset) {
    const auto plan = X11PlacingPlanner::plan(window, wish, origin);
    return plan ? plan->requests : Requests{};
}

X11WindowRequest place(int x, int y, int width, int height) {
    return X11PlaceRequest{{x, y, width, height}, true};
}

X11WindowRequest move(int x, int y) { return X11PlaceRequest{{x, y, 0, 0}, false}; }

TEST(X11PlacingPlanner, positionAndSizeAreOneRequest) {
    // The corner is the decoration's, the size the client's.
    EXPECT_EQ(requestsFor(decorated(), both({0, 0, 960, 1080})),
              (Requests{place(0, 0, 960 - 11, 1080 - 36)}));
}

TEST(X11PlacingPlanner, aPositionAloneNamesNoSize) {
    EXPECT_EQ(requestsFor(decorated(), {Point{10.4, 20.6}, {}}), (Requests{move(10, 21)}));
}

TEST(X11PlacingPlanner, aSizeAloneKeepsTheCorner) {
    EXPECT_EQ(requestsFor(decorated(), {{}, Size{500, 300}}),
              (Requests{place(100, 100, 500 - 11, 300 - 36)}));
}

TEST(X11PlacingPlanner, aSizeAloneIsRoundedWhereTheLastPositionPutsIt) {
    X11Window window = decorated({460, 129, 444, 400});
    window.written = X11WrittenFrame{
        {455.4, 100, 455.3, 436}, noOffset, {455.4, 100}, window.frame().outer(), std::nullopt};
    const auto plan = X11PlacingPlanner::plan(window, {{}, Size{455.3, 500}}, noOffset);
    ASSERT_TRUE(plan);
    EXPECT_EQ(plan->order.target, (X11PixelRect{455, 100, 456, 500}));
}

TEST(X11PlacingPlanner, ownDecorationIsPlacedByTheEdgeOfItsShadow) {
    X11Window window;
    window.client = {100, 100, 700, 500};
    window.facts.shadow = {22, 26, 18, 30};
    window.facts.statesShadow = true;
    EXPECT_EQ(requestsFor(window, both({0, 0, 960, 1080})),
              (Requests{place(-22, -18, 960 + 48, 1080 + 48)}));
}

TEST(X11PlacingPlanner, whatIsSoIsNotAskedFor) {
    const X11Window window = decorated();
    for (const PlacingWish& wish :
         {both({100, 100, 611, 436}), both({99.7, 100.3, 611.2, 436.1}),
          PlacingWish{Point{100, 100}, {}}, PlacingWish{{}, Size{611, 436}}}) {
        const auto plan = X11PlacingPlanner::plan(window, wish, noOffset);
        ASSERT_TRUE(plan);
        EXPECT_TRUE(plan->requests.empty());
    }
}

TEST(X11PlacingPlanner, whatIsUnderWayIsAskedForAgain) {
    X11Window window = decorated();
    window.written = X11WrittenFrame{
        {0, 0, 960, 1080}, noOffset, {0, 0}, {0, 0, 960, 1080}, window.frame().outer()};
    EXPECT_EQ(requestsFor(window, both({100, 100, 611, 436})),
              (Requests{place(100, 100, 600, 400)}))
        << "the earlier wish would come true otherwise";
    const auto later = X11PlacingPlanner::plan(window, {Point{5, 5}, {}}, noOffset);
    ASSERT_TRUE(later);
    EXPECT_EQ(later->order.target, (X11PixelRect{5, 5, 960, 1080})) << "its size is to come yet";
}

TEST(X11PlacingPlanner, sizeRulesThatAreMetAlreadyLeaveNothingToAsk) {
    X11Window window = decorated({5, 29, 6 + 9 * 60, 4 + 17 * 20});
    window.facts.sizeHints.baseWidth = 6;
    window.facts.sizeHints.baseHeight = 4;
    window.facts.sizeHints.stepWidth = 9;
    window.facts.sizeHints.stepHeight = 17;
    const Rect now = window.frame().outer().toRect();
    EXPECT_TRUE(requestsFor(window, both({now.x, now.y, now.width + 8, now.height + 16})).empty());
    EXPECT_FALSE(requestsFor(window, both({now.x, now.y, now.width + 9, now.height})).empty());
}

TEST(X11PlacingPlanner, maximizedIsLeftFirst) {
    for (const bool horizontally : {false, true}) {
        X11Window window = decorated();
        window.facts.isMaximizedHorizontally = horizontally;
        window.facts.isMaximizedVertically = !horizontally;
        EXPECT_EQ(requestsFor(window, both({0, 0, 960, 1080})),
                  (Requests{X11StateRequest{State::maximized, false}, place(0, 0, 949, 1044)}));
        EXPECT_EQ(requestsFor(window, {Point{0, 0}, {}}),
                  (Requests{X11StateRequest{State::maximized, false}, move(0, 0)}));
        EXPECT_TRUE(requestsFor(window, both({100, 100, 611, 436})).empty()) << "it is there";
    }
}

TEST(X11PlacingPlanner, shadedIsLeftForASizeOnly) {
    X11Window window = decorated();
    window.facts.isShaded = true;
    EXPECT_EQ(requestsFor(window, both({0, 0, 960, 1080})),
              (Requests{X11StateRequest{State::shaded, false}, place(0, 0, 949, 1044)}));
    EXPECT_EQ(requestsFor(window, {Point{0, 0}, {}}), (Requests{move(0, 0)}));
    EXPECT_EQ(requestsFor(window, both({100, 100, 611, 436})).size(), 2U)
        << "its client is there, but not to be seen";
}

TEST(X11PlacingPlanner, fullScreenIsRefused) {
    X11Window window = decorated();
    window.facts.isFullScreen = true;
    EXPECT_FALSE(X11PlacingPlanner::plan(window, both({0, 0, 960, 1080}), noOffset));
    EXPECT_FALSE(X11PlacingPlanner::plan(window, {Point{0, 0}, {}}, noOffset));
}

TEST(X11PlacingPlanner, absurdNumbersAreRefused) {
    const X11Window window = decorated();
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(X11PlacingPlanner::plan(window, {}, noOffset));
    for (const double absurd : {infinity, -infinity, nan, 1e300, 32001.0}) {
        EXPECT_FALSE(X11PlacingPlanner::plan(window, {Point{absurd, 0}, {}}, noOffset));
        EXPECT_FALSE(X11PlacingPlanner::plan(window, both({0, absurd, 10, 10}), noOffset));
        EXPECT_FALSE(X11PlacingPlanner::plan(window, both({0, 0, absurd, 10}), noOffset));
    }
    EXPECT_FALSE(X11PlacingPlanner::plan(window, both({0, 0, 0, 10}), noOffset));
    EXPECT_FALSE(X11PlacingPlanner::plan(window, both({0, 0, 10, -5}), noOffset));
    EXPECT_FALSE(X11PlacingPlanner::plan(window, both({31000, 0, 500, 500}), {1000, 0}))
        << "beyond the reach of the server on its root";
}

TEST(X11PlacingPlanner, theSpaceMayBeginElsewhereOnTheRoot) {
    const Point origin{1080, 420};
    EXPECT_EQ(requestsFor(decorated(), both({0, 0, 960, 540}), origin),
              (Requests{place(1080, 420, 949, 504)}));
}

TEST(X11PlacingPlanner, aTileIsLeftByOneAxisAndAMaximizedOneByBoth) {
    EXPECT_EQ(X11PlacingPlanner::untiling(decorated()),
              (Requests{X11StateRequest{State::maximizedVertically, true},
                        X11StateRequest{State::maximizedVertically, false}}));
    X11Window maximized = decorated();
    maximized.facts.isMaximizedHorizontally = true;
    maximized.facts.isMaximizedVertically = true;
    EXPECT_EQ(X11PlacingPlanner::untiling(maximized),
              (Requests{X11StateRequest{State::maximized, false}}));
}

TEST(X11PlacingOrder, keepsTheUnroundedNumberOfWhatWasMet) {
    const auto plan =
        X11PlacingPlanner::plan(decorated(), both({10.3, 20.4, 500.1, 400.4}), noOffset);
    ASSERT_TRUE(plan);
    X11Window window = decorated({15, 49, 489, 300});
    const X11WrittenFrame outcome = plan->order.outcome(window);
    EXPECT_EQ(outcome.frame, (Rect{10.3, 20.4, 500.1, 336})) << "its height is its own";
    EXPECT_EQ(outcome.became, window.frame().outer());
    window.written = outcome;
    EXPECT_EQ(X11PlacingPlanner::frame(window, window.frame().outer(), noOffset), outcome.frame);
    window.client.x += 1;
    EXPECT_EQ(X11PlacingPlanner::frame(window, window.frame().outer(), noOffset),
              window.frame().outer().toRect());
}

RC_GTEST_PROP(X11PlacingPlanner, aWindowThatTookWhatWasAskedIsWhereItWasWanted,
              (const X11Window& start, const Rect& wanted)) {
    const auto plan = X11PlacingPlanner::plan(start, both(wanted), noOffset);
    RC_ASSERT(plan.has_value());
    RC_PRE(!plan->requests.empty());
    const auto* request = std::get_if<X11PlaceRequest>(&plan->requests.back());
    RC_ASSERT(request != nullptr);
    X11Window window = start;
    window.facts.isMaximizedHorizontally = false;
    window.facts.isMaximizedVertically = false;
    window.facts.isShaded = false;
    const X11Extents& decoration = window.facts.decoration;
    window.client = {request->place.x + decoration.left, request->place.y + decoration.top,
                     request->place.width, request->place.height};
    RC_ASSERT(plan->order.isMetBy(window));
    window.written = plan->order.outcome(window);
    RC_ASSERT(X11PlacingPlanner::frame(window, window.frame().outer(), noOffset) == wanted);
    // And once it is there nothing more is asked.
    const auto again = X11PlacingPlanner::plan(window, both(wanted), noOffset);
    RC_ASSERT(again.has_value());
    RC_ASSERT(again->requests.empty());
}

}  // namespace
}  // namespace lumatile
