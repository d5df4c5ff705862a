// A desktop full of windows: what a step costs the run loop, and what is known right afterwards.

#include <gtest/gtest.h>

#include <signal.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <string>

#include "oled_protection/JitterPolicy.h"
#include "platform/windows/WriteTimeouts.h"
#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/VainWaits.h"
#include "tests/desktop/support/kwin/SessionWait.h"
#include "tests/desktop/support/shifting/KWinShiftingDesk.h"

namespace lumatile::desktop {
namespace {

constexpr int count = 100;
constexpr std::size_t steps = 5;

// A program of 100 windows, each in a place of its own.
TEST(KWinManyWindows, areAllSteppedInOneGoAndKnownRightAfterwards) {
    KWinShiftingDesk desk({});
    KWinProbe& probe = desk.desktop().probe();
    NativeWindow::Options options;
    options.count = count;
    const auto program = desk.desktop().openWindow(options);
    ASSERT_TRUE(waitInSession([&] { return probe.windows().size() == count; }))
        << probe.windows().size();
    std::map<std::string, Rect> homes;
    for (const auto& [id, state] : probe.windows()) {
        const int index = static_cast<int>(homes.size());
        homes[id] = {50.0 + 12 * index, 60.0 + 5 * index, 300, 200};
        probe.place(id, homes[id]);
    }
    ASSERT_TRUE(waitInSession([&] {
        return std::all_of(homes.begin(), homes.end(), [&](const auto& home) {
            return probe.window(home.first)->frame == home.second;
        });
    }));
    desk.settle();
    double slowest = 0;  // Seconds.
    for (std::size_t step = 0; step < steps; ++step) {
        desk.forget();
        const auto before = std::chrono::steady_clock::now();
        EXPECT_EQ(vainSecondsFor([&] { desk.step(); }), 0) << "every window answers";
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - before;
        slowest = std::max(slowest, passed.count());
        EXPECT_LE(desk.orders().messages(), count / 4U) << "they go together";
        // What the program reads is what became of it, with nothing in between.
        const auto& tracked = desk.conductor().orbit().tracked();
        ASSERT_EQ(tracked.size(), static_cast<std::size_t>(count));
        const Offset& offset = ShiftingDesk::ring.at(step);
        for (const auto& [key, window] : tracked) {
            ASSERT_EQ(window.window->frame(), window.home.offsetBy(offset.dx, offset.dy));
        }
        probe.sync();
        for (const auto& [id, home] : homes) {
            ASSERT_EQ(probe.window(id)->frame, home.offsetBy(offset.dx, offset.dy));
        }
    }
    RecordProperty("slowestStepMilliseconds", static_cast<int>(slowest * 1000));
    desk.conductor().stopFeatures();
    probe.sync();
    for (const auto& [id, home] : homes) {
        EXPECT_EQ(probe.window(id)->frame, home);
    }
}

// Programs that hang while the hour's jitter moves the seam between their windows.
TEST(KWinManyWindows, ofProgramsThatHangAreWaitedForOnceAndTogether) {
    KWinShiftingDesk desk({.oledSettings = ShiftingDesk::jitterOnly});
    const auto left = desk.desktop().openWindow({.applicationId = "org.lumatile.test.Left"});
    desk.run("command.left");
    const auto right = desk.desktop().openWindow({.applicationId = "org.lumatile.test.Right"});
    desk.run("command.right");
    desk.settle();
    const Rect leftBefore = left->frame();
    const Rect rightBefore = right->frame();
    left->process().signal(SIGSTOP);
    right->process().signal(SIGSTOP);
    constexpr double hour = 3600;
    EXPECT_LT(vainSecondsFor([&] { desk.advance(hour); }), 2 * WriteTimeouts::longest)
        << "one wait for two windows and all steps of an hour";
    EXPECT_EQ(left->frame(), leftBefore);
    EXPECT_EQ(right->frame(), rightBefore);
    left->process().signal(SIGCONT);
    right->process().signal(SIGCONT);
    const JitterPolicy jitter{6, hour};
    const double seam = 960 + jitter.offset(desk.clock().wallSeconds()).dx;
    ASSERT_NE(seam, leftBefore.maxX()) << "nothing was to be moved in this hour";
    EXPECT_TRUE(waitInSession([&] {
        return left->frame() == Rect{0, 0, seam, 1080} &&
               right->frame() == Rect{seam, 0, 1920 - seam, 1080};
    })) << "what was asked for meanwhile comes late, "
        << left->frame().width << " and " << right->frame().width << " wide";
}

}  // namespace
}  // namespace lumatile::desktop
