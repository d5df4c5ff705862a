#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "tests/unit/Lumatile/DesktopWithConductor.h"

namespace lumatile {
namespace {

const Rect before{2000, 300, 640, 480};

/// A command, the one frame read of it that fails, and what comes of it. The window lies on the
/// second screen; a window without a frame counts as at the origin, on the first one.
struct FailedRead {
    const char* nameKey = nullptr;
    std::size_t read = 0;
    Rect becomes;
    bool isRemembered = false;
    bool isTracked = false;

    friend std::ostream& operator<<(std::ostream& stream, const FailedRead& row) {
        return stream << row.nameKey << ", read " << row.read;
    }
};

const Rect maximizedOnFirst{0, 24, 1920, 1080};
const Rect maximizedOnSecond{1920, 0, 1080, 1920};
const Rect centeredOnFirst{640, 324, 640, 480};
const Rect centeredOnSecond{2140, 720, 640, 480};
// (2000 - 1920) / 1080 and so on of the first visible frame.
const Rect onNext{80.0 / 1080 * 1920, 24 + 300.0 / 1920 * 1080, 640.0 / 1080 * 1920,
                  480.0 / 1920 * 1080};

const FailedRead failedReads[] = {
    // 1: which screen, 2: what to remember, 3: what the orbit goes by.
    {"command.maximize", 1, maximizedOnFirst, true, true},
    {"command.maximize", 2, maximizedOnSecond, false, true},
    {"command.maximize", 3, maximizedOnSecond, true, false},
    // 1: which screen, 2: what size, 3: what to remember, 4: what the orbit goes by.
    {"command.center", 1, centeredOnFirst, true, true},
    {"command.center", 2, before, false, false},
    {"command.center", 3, centeredOnSecond, false, true},
    {"command.center", 4, centeredOnSecond, true, false},
    {"command.restore", 1, before, true, true},
    {"command.restore", 2, maximizedOnSecond, true, true},
    {"command.restore", 3, before, false, true},
    {"command.restore", 4, before, true, false},
    {"command.nextDisplay", 1, onNext, true, true},
    {"command.nextDisplay", 2, before, false, false},
    {"command.nextDisplay", 3, onNext, false, true},
    {"command.nextDisplay", 4, onNext, true, false},
    {"command.previousDisplay", 2, before, false, false},
};

class FailedFrameRead : public testing::TestWithParam<FailedRead> {};

TEST_P(FailedFrameRead, costsWhatDependsOnItAndNothingElse) {
    const FailedRead& row = GetParam();
    DesktopWithConductor desk;
    desk.plugPortrait();
    const WindowID window = desk.open(desk.editor, before);
    desk.failFrameRead(window, row.read);
    desk.run(row.nameKey);
    EXPECT_TRUE(desk.frame(window)->isWithin(1e-9, row.becomes))
        << desk.frame(window)->x << " " << desk.frame(window)->y;
    EXPECT_EQ(desk.remembered(window), row.isRemembered ? std::optional(before) : std::nullopt);
    EXPECT_EQ(desk.home(window).has_value(), row.isTracked);
    EXPECT_TRUE(desk.log.lines().empty());
}

INSTANTIATE_TEST_SUITE_P(OneByOne, FailedFrameRead, testing::ValuesIn(failedReads));

TEST(SnapFailure, aWindowWhoseFrameCanNeverBeReadSnapsOnTheFirstScreen) {
    DesktopWithConductor desk;
    desk.plugPortrait();
    const WindowID window = desk.open(desk.editor, before);
    desk.model(window).faults.unreadable.emplace(AttributeName::size);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 1080}));
    EXPECT_FALSE(desk.remembered(window));
    EXPECT_FALSE(desk.home(window));
}

TEST(SnapFailure, restoreOfAWindowWhoseFrameCanNeverBeReadFillsTheFirstScreen) {
    DesktopWithConductor desk;
    desk.plugPortrait();
    const WindowID window = desk.open(desk.editor, before);
    desk.model(window).faults.unreadable.emplace(AttributeName::position);
    desk.run("command.restore");
    EXPECT_EQ(desk.frame(window), maximizedOnFirst);
    EXPECT_FALSE(desk.remembered(window));
}

TEST(SnapFailure, aFrameOfTheWrongTypeIsNoFrame) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.model(window).faults.answers[std::string(AttributeName::position)] = Size{300, 300};
    desk.run("command.center");
    EXPECT_EQ(desk.frame(window), (Rect{300, 300, 640, 480}));
    EXPECT_EQ(desk.traffic.count(AccessKind::write), 0U);
}

TEST(SnapFailure, aWindowThatCannotBePlacedIsStillRememberedAndTracked) {
    const Rect frame{300, 300, 640, 480};
    const auto expectStays = [&](auto change) {
        DesktopWithConductor desk;
        const WindowID window = desk.open(desk.editor, frame);
        change(desk, window);
        desk.run("command.left");
        EXPECT_EQ(desk.frame(window), frame);
        EXPECT_EQ(desk.remembered(window), frame);
        EXPECT_EQ(desk.home(window), (Rect{0, 24, 960, 1080}));
        EXPECT_TRUE(desk.log.lines().empty());
    };
    expectStays([](auto& desk, auto window) { desk.model(window).traits.isFullScreen = true; });
    expectStays([](auto& desk, auto window) { desk.model(window).traits.isMovable = false; });
    expectStays([](auto& desk, auto) { desk.windowManager.policy.refusesMoves = true; });
    expectStays([](auto& desk, auto) { desk.windowManager.policy.leavesUnanswered = true; });
}

TEST(SnapFailure, aWindowWhosePositionCannotBeWrittenIsStillResized) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.model(window).faults.unwritable.emplace(AttributeName::position);
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{300, 300, 960, 1080}));
}

TEST(SnapFailure, aWindowWhoseSizeCannotBeWrittenIsStillMoved) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.model(window).faults.unwritable.emplace(AttributeName::size);
    desk.run("command.right");
    EXPECT_EQ(desk.frame(window), (Rect{960, 24, 640, 480}));
}

TEST(SnapFailure, aMinimumSizeIsTheProgramsRightAndTheCornerIsExact) {
    DesktopWithConductor desk;
    SimulatedWindowTraits traits;
    traits.frame = {300, 300, 800, 700};
    traits.decorations = {1, 1, 20, 5};
    traits.minimumContent = {798, 675};
    const WindowID window = desk.open(desk.editor, traits);
    desk.run("command.topLeft");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 700}));
    desk.run("command.leftThird");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 800, 1080}));
    // The home is the target all the same, as the next snap of another window would have it.
    EXPECT_EQ(desk.home(window), (Rect{0, 24, 640, 1080}));
}

TEST(SnapFailure, sizeStepsAreTheProgramsRightAndTheCornerIsExact) {
    DesktopWithConductor desk;
    SimulatedWindowTraits traits;
    traits.frame = {300, 300, 484, 316};
    traits.decorations = {5, 5, 29, 5};
    traits.baseContent = {4, 4};
    traits.increment = {6, 13};
    const WindowID window = desk.open(desk.editor, traits);
    desk.run("command.right");
    // 157 steps of 6 and 80 of 13 are what fits into 950 × 1046 less the base.
    EXPECT_EQ(desk.frame(window), (Rect{960, 24, 157 * 6 + 4 + 10, 80 * 13 + 4 + 34}));
}

TEST(SnapFailure, aWindowManagerThatAnswersLateIsWaitedFor) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.windowManager.policy.latencySeconds = 0.03;
    const double start = desk.runLoop.now();
    desk.run("command.left");
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 1080}));
    EXPECT_NEAR(desk.runLoop.now() - start, 0.06, 1e-6);
    EXPECT_EQ(desk.conductor->orbit().tracked(desk.key(window))->lastApplied,
              (Rect{0, 24, 960, 1080}));
}

TEST(SnapFailure, aWindowManagerThatAnswersTooLateCostsOneTimeoutAndTheWindowStillArrives) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.windowManager.policy.latencySeconds = 2;
    const double start = desk.runLoop.now();
    desk.run("command.left");
    EXPECT_NEAR(desk.runLoop.now() - start, 0.25, 1e-6);
    EXPECT_EQ(desk.frame(window), (Rect{300, 300, 640, 480}));
    desk.advance(5);
    EXPECT_EQ(desk.frame(window), (Rect{0, 24, 960, 1080}));
}

TEST(SnapFailure, aWindowManagerThatKeepsWindowsWholeStillPlacesExactly) {
    DesktopWithConductor desk;
    desk.windowManager.policy.keepsWindowsWhole = true;
    const WindowID window = desk.open(desk.editor, Rect{0, 24, 1900, 1000});
    desk.run("command.bottomRight");
    EXPECT_EQ(desk.frame(window), (Rect{960, 564, 960, 540}));
}

TEST(SnapFailure, aHungApplicationCostsABoundedTimeAndNothingHappens) {
    DesktopWithConductor desk;
    const WindowID window = desk.open(desk.editor, Rect{300, 300, 640, 480});
    desk.programs.find(desk.editor)->isHung = true;
    const double start = desk.runLoop.now();
    desk.press({123, 6144});
    // Its focused window, its main window, and its focused window by way of the session.
    EXPECT_NEAR(desk.runLoop.now() - start, 0.75, 1e-6);
    desk.programs.find(desk.editor)->isHung = false;
    EXPECT_EQ(desk.frame(window), (Rect{300, 300, 640, 480}));
    EXPECT_TRUE(desk.log.lines().empty());
}

/// What may happen between any two questions of a command.
struct Mishap {
    const char* name = nullptr;
    void (*happen)(DesktopWithConductor& desk, WindowID window) = nullptr;

    friend std::ostream& operator<<(std::ostream& stream, const Mishap& mishap) {
        return stream << mishap.name;
    }
};

const Mishap mishaps[] = {
    {"quits", [](auto& desk, auto) { desk.quit(desk.editor); }},
    {"closes", [](auto& desk, auto window) { desk.programs.close(window); }},
    {"hangs", [](auto& desk, auto) { desk.programs.find(desk.editor)->isHung = true; }},
    {"unplugs", [](auto& desk, auto) { desk.unplug("tall"); }},
    {"losesTheLastScreen",
     [](auto& desk, auto) {
         desk.unplug("tall");
         desk.unplug("main");
     }},
    {"losesPermission", [](auto& desk, auto) { desk.accessibility.setTrusted(false); }},
};

class Mishaps : public testing::TestWithParam<Mishap> {};

/// The questions of a command in which nothing goes wrong.
std::size_t callsOf(const char* nameKey) {
    DesktopWithConductor desk;
    desk.plugPortrait();
    desk.open(desk.editor, Rect{301, 300, 641, 480});
    desk.run(nameKey);
    return desk.traffic.record().size();
}

TEST_P(Mishaps, betweenAnyTwoCallsHurtNothingElse) {
    const Rect other{100, 100, 500, 400};
    for (const auto* nameKey : {"command.left", "command.center", "command.restore",
                                "command.nextDisplay", "command.previousDisplay"}) {
        const std::size_t calls = callsOf(nameKey);
        // The search, the process, two frames at least, the placing and the look at it.
        EXPECT_GE(calls, 1U + 1 + 4 + 5 + 2) << nameKey;
        for (std::size_t nth = 1; nth <= calls; ++nth) {
            DesktopWithConductor desk;
            desk.plugPortrait();
            const ApplicationID browser = desk.launch({.pid = 200, .applicationId = "browser"});
            const WindowID bystander = desk.open(browser, other);
            const WindowID window = desk.open(desk.editor, Rect{301, 300, 641, 480});
            desk.traffic.before(nth, [&] { GetParam().happen(desk, window); });
            const double start = desk.runLoop.now();
            desk.run(nameKey);
            EXPECT_EQ(desk.traffic.openOrders(), 0U) << nameKey << " " << nth;
            // A window that goes before it was found leaves the focus to the next one, which then
            // is what the command is for.
            const bool isNext = nth == 1 && desk.programs.focusedWindow() == bystander;
            if (!isNext) {
                EXPECT_EQ(desk.frame(bystander), other) << nameKey << " " << nth;
            }
            EXPECT_LE(desk.runLoop.now() - start, 0.25 * 20) << nameKey << " " << nth;
            EXPECT_TRUE(desk.log.lines().empty());
            // And the next command works, where there still is something to work on.
            desk.accessibility.setTrusted(true);
            if (desk.screens.count() > 0) {
                desk.programs.focus(bystander);
                desk.dragTo(bystander, other);
                desk.run("command.maximize");
                EXPECT_EQ(desk.frame(bystander), maximizedOnFirst) << nameKey << " " << nth;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Each, Mishaps, testing::ValuesIn(mishaps),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace lumatile
