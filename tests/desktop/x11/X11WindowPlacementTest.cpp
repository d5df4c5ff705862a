#include <sys/wait.h>

#include <csignal>

#include "platform/x11/X11SizeHints.h"
#include "tests/desktop/support/HeldWindowManager.h"
#include "tests/desktop/x11/X11DesktopTest.h"
#include "windows/JoinedWrites.h"

namespace lumatile::desktop {
namespace {

using testing::SizeIs;

class X11WindowPlacement : public X11DesktopTest {
protected:
    /// Where a write to it begins, with a window manager that has nothing left to do.
    void put(AXWindow& target, const Rect& rect) {
        ASSERT_TRUE(XClient::waitUntil([&] {
            target.setFrame(rect);
            adapter().connection->synchronize();
            return target.frame() == rect;
        }));
        settle();
    }
};

TEST_P(X11WindowPlacement, frameIsWhatTheUserSees) {
    start();
    for (const Kind kind : {Kind::decorated, Kind::undecorated, Kind::clientSide, Kind::dialog}) {
        const auto window = open(kind);
        window->place({300, 200, 700, 500});
        EXPECT_EQ(adapter().window(window->id()).frame(), (Rect{300, 200, 700, 500}))
            << toString(kind);
    }
}

TEST_P(X11WindowPlacement, setFrameLandsExactlyWhenItReturns) {
    start();
    for (const Kind kind : {Kind::decorated, Kind::undecorated, Kind::clientSide, Kind::dialog}) {
        const auto window = open(kind);
        AXWindow target = adapter().window(window->id());
        for (const Rect& rect : {Rect{0, 0, 960, 1080}, Rect{960, 0, 960, 1080},
                                 Rect{0, 540, 1920, 540}, Rect{101, 53, 333, 271}}) {
            target.setFrame(rect);
            // No waiting here: the write has returned.
            EXPECT_EQ(rectOf(window->frame()), rect) << toString(kind);
            EXPECT_EQ(target.frame(), rect) << toString(kind);
        }
    }
}

TEST_P(X11WindowPlacement, setFrameMatchesTheHarnessOwnPlacing) {
    start();
    const auto first = open(Kind::decorated);
    const auto second = open(Kind::decorated);
    first->place({77, 91, 613, 457});
    adapter().window(second->id()).setFrame({77, 91, 613, 457});
    EXPECT_EQ(second->client(), first->client());
}

TEST_P(X11WindowPlacement, sizeIncrementWindowKeepsItsOriginExact) {
    start();
    const auto window = open(Kind::sizeIncrement);
    AXWindow target = adapter().window(window->id());
    for (const Rect& rect : {Rect{0, 0, 960, 1080}, Rect{101, 53, 700, 500}}) {
        const Rect elsewhere{300, 200, 600, 400};
        const double seconds =
            vainSecondsAtBest([&] { target.setFrame(elsewhere); }, [&] { target.setFrame(rect); });
        const PixelRect became = window->frame();
        EXPECT_EQ(became.x, rect.x);
        EXPECT_EQ(became.y, rect.y);
        // xfwm4 gives the size that was asked, the others the next smaller step.
        EXPECT_LE(became.width, rect.width);
        EXPECT_LE(became.height, rect.height);
        EXPECT_GT(became.width, rect.width - TestWindow::stepWidth);
        EXPECT_GT(became.height, rect.height - TestWindow::stepHeight);
        EXPECT_EQ(target.frame(), rectOf(became));
        EXPECT_LT(seconds, 0.4 * patient) << "the steps are known, so nothing is left to wait for";
    }
}

TEST_P(X11WindowPlacement, minimumSizeIsTheProgramsRight) {
    start();
    TestWindow::Options options;
    TestWindow window(desktop().display(), options);
    std::vector<std::uint32_t> hints(18);
    hints[0] = 1U << 4U;
    hints[5] = 500;
    hints[6] = 300;
    window.setCardinals(window.id(), "WM_NORMAL_HINTS", XCB_ATOM_WM_SIZE_HINTS, hints);
    window.mapActive();
    AXWindow target = adapter().window(window.id());
    const Rect elsewhere{300, 200, 600, 400};
    const Rect tooSmall{40, 50, 200, 200};
    const double seconds =
        vainSecondsAtBest([&] { target.setFrame(elsewhere); }, [&] { target.setFrame(tooSmall); });
    EXPECT_EQ(window.client().width, 500);
    EXPECT_EQ(window.client().height, 300);
    EXPECT_EQ(window.frame().x, 40);
    EXPECT_EQ(window.frame().y, 50);
    EXPECT_EQ(target.frame(), rectOf(window.frame()));
    EXPECT_LT(seconds, 0.4 * patient);
}

TEST_P(X11WindowPlacement, thousandMovesLeaveNoDriftAndResizeNothing) {
    start();
    for (const Kind kind :
         {Kind::decorated, Kind::undecorated, Kind::clientSide, Kind::sizeIncrement}) {
        const auto window = open(kind);
        AXWindow target = adapter().window(window->id());
        const std::optional<Rect> home = target.frame();
        ASSERT_TRUE(home);
        const PixelRect client = window->client();
        window->roundTrip();
        window->forgetConfigurations();
        for (int move = 0; move < 500; ++move) {
            target.setPosition({home->x + 1, home->y + 1});
            ASSERT_EQ(target.frame(), home->offsetBy(1, 1)) << toString(kind) << " " << move;
            target.setPosition(home->origin());
            ASSERT_EQ(target.frame(), home) << toString(kind) << " " << move;
        }
        EXPECT_EQ(window->client(), client) << toString(kind);
        window->roundTrip();
        for (const PixelRect& told : window->configurations()) {
            ASSERT_EQ(told.width, client.width) << toString(kind);
            ASSERT_EQ(told.height, client.height) << toString(kind);
        }
    }
}

TEST_P(X11WindowPlacement, thirdsOf1366PixelsMeet) {
    start(MonitorLayout::smallLandscape());
    const double third = 1366.0 / 3;
    std::vector<std::unique_ptr<TestWindow>> windows;
    for (int column = 0; column < 3; ++column) {
        windows.push_back(open(column == 1 ? Kind::clientSide : Kind::decorated));
        AXWindow target = adapter().window(windows.back()->id());
        const Rect wanted{third * column, 0, third, 768};
        target.setFrame(wanted);
        EXPECT_EQ(target.frame(), wanted) << "what was written is read, unrounded";
    }
    EXPECT_EQ(windows[0]->frame(), (PixelRect{0, 0, 455, 768}));
    EXPECT_EQ(windows[1]->frame(), (PixelRect{455, 0, 456, 768}));
    EXPECT_EQ(windows[2]->frame(), (PixelRect{911, 0, 455, 768}));
}

TEST_P(X11WindowPlacement, movingAnUnroundedFrameNeverResizesIt) {
    start(MonitorLayout::smallLandscape());
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    const double third = 1366.0 / 3;
    target.setFrame({third, 100, third, 500});
    EXPECT_EQ(window->frame(), (PixelRect{455, 100, 456, 500}));
    for (const double step : {0.25, 0.5, 1.0, 1.75, -0.9, 0.0}) {
        target.setPosition({third + step, 100});
        EXPECT_EQ(window->frame().width, 456);
        const std::optional<Rect> read = target.frame();
        ASSERT_TRUE(read);
        EXPECT_EQ(*read, (Rect{third + step, 100, third, 500}));
    }
}

TEST_P(X11WindowPlacement, readFollowsTheServerOnceSomebodyElseMovesTheWindow) {
    start();
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    target.setFrame({100.4, 100.4, 500.2, 400.2});
    EXPECT_EQ(target.frame(), (Rect{100.4, 100.4, 500.2, 400.2}));
    window->place({110, 100, 500, 400});
    adapter().connection->synchronize();
    EXPECT_EQ(target.frame(), (Rect{110, 100, 500, 400}));
    window->place({110, 100, 502, 402});
    adapter().connection->synchronize();
    EXPECT_EQ(target.frame(), (Rect{110, 100, 502, 402}));
}

TEST_P(X11WindowPlacement, sizeAloneKeepsTheOrigin) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    const Element element = adapter().element(window->id());
    EXPECT_TRUE(adapter().platform.write(element, AttributeName::size, Size{512, 384}));
    EXPECT_EQ(window->frame(), (PixelRect{300, 200, 512, 384}));
}

TEST_P(X11WindowPlacement, ordinarySnapIsOneMessage) {
    start();
    for (const Kind kind : {Kind::decorated, Kind::clientSide, Kind::sizeIncrement}) {
        const auto window = open(kind);
        AXWindow target = adapter().window(window->id());
        target.setFrame({100, 100, 700, 500});
        desktop().observer().forget();
        target.setFrame({0, 0, 960, 1080});
        EXPECT_THAT(desktop().observer().messages(), SizeIs(1)) << toString(kind);
        EXPECT_THAT(desktop().observer().messages(window->id(), "_NET_MOVERESIZE_WINDOW"),
                    SizeIs(1));
    }
}

TEST_P(X11WindowPlacement, joinedWritesAreCarriedOutAtTheirEnd) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    const Element element = adapter().element(window->id());
    AccessibilityPlatform& platform = adapter().platform;
    desktop().observer().forget();
    {
        const JoinedWrites together(platform, element);
        EXPECT_TRUE(platform.write(element, AttributeName::position, Point{10, 20}));
        EXPECT_TRUE(platform.write(element, AttributeName::size, Size{512, 384}));
        EXPECT_FALSE(platform.write(element, AttributeName::size, Size{1e300, 384}));
        EXPECT_TRUE(platform.write(element, AttributeName::position, Point{30, 40}));
        EXPECT_THAT(desktop().observer().messages(), SizeIs(0));
    }
    EXPECT_EQ(window->frame(), (PixelRect{30, 40, 512, 384}));
    EXPECT_THAT(desktop().observer().messages(), SizeIs(1));
}

TEST_P(X11WindowPlacement, aReadSeesTheJoinedWritesBeforeIt) {
    start();
    const auto window = open(Kind::decorated);
    const auto other = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    other->place({300, 200, 700, 500});
    const Element element = adapter().element(window->id());
    const Element otherElement = adapter().element(other->id());
    AccessibilityPlatform& platform = adapter().platform;
    const JoinedWrites together(platform, element);
    EXPECT_TRUE(platform.write(element, AttributeName::position, Point{10, 20}));
    EXPECT_EQ(AttributeReader::value<Point>(platform, element, AttributeName::position),
              (Point{10, 20}));
    EXPECT_EQ(window->frame(), (PixelRect{10, 20, 700, 500}));
    EXPECT_TRUE(platform.write(element, AttributeName::size, Size{512, 384}));
    EXPECT_TRUE(platform.write(otherElement, AttributeName::size, Size{640, 480}))
        << "not one of those that are joined";
    EXPECT_EQ(other->frame(), (PixelRect{300, 200, 640, 480}));
    EXPECT_EQ(window->frame(), (PixelRect{10, 20, 512, 384})) << "what was written before is done";
}

TEST_P(X11WindowPlacement, aSizeThatCannotBeAskedForLeavesThePosition) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    adapter().window(window->id()).setFrame({10, 20, 0, 0});
    EXPECT_EQ(window->frame(), (PixelRect{10, 20, 700, 500}));
}

TEST_P(X11WindowPlacement, shiftIsOneMessageThatNamesNoSize) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    desktop().observer().forget();
    adapter().window(window->id()).setPosition({301, 200});
    const auto messages = desktop().observer().messages();
    ASSERT_THAT(messages, SizeIs(1));
    EXPECT_EQ(messages[0].data,
              (std::array<std::uint32_t, 5>{1U | 3U << 8U | 2U << 12U, 301, 200, 0, 0}));
    EXPECT_EQ(window->frame(), (PixelRect{301, 200, 700, 500}));
}

TEST_P(X11WindowPlacement, writingWhatIsSoAsksNothing) {
    start();
    for (const Kind kind : {Kind::decorated, Kind::clientSide, Kind::sizeIncrement}) {
        const auto window = open(kind);
        AXWindow target = adapter().window(window->id());
        target.setFrame({100.3, 100.3, 700.3, 500.3});
        desktop().observer().forget();
        target.setFrame({100.3, 100.3, 700.3, 500.3});
        target.setFrame({100.1, 99.9, 700.4, 500.6});
        EXPECT_THAT(desktop().observer().messages(), SizeIs(0)) << toString(kind);
    }
}

TEST_P(X11WindowPlacement, absurdRectanglesAreRefused) {
    start();
    const auto window = open(Kind::decorated);
    const Element element = adapter().element(window->id());
    AccessibilityPlatform& platform = adapter().platform;
    const PixelRect before = window->frame();
    desktop().observer().forget();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double absurd : {nan, infinity, -infinity, 1e300, 32001.0, -32001.0}) {
        EXPECT_FALSE(platform.write(element, AttributeName::position, Point{absurd, 100}));
        EXPECT_FALSE(platform.write(element, AttributeName::position, Point{100, absurd}));
        EXPECT_FALSE(platform.write(element, AttributeName::size, Size{absurd, 100}));
        EXPECT_FALSE(platform.write(element, AttributeName::size, Size{100, absurd}));
    }
    for (const double small : {0.0, 0.3, -1.0, -500.0}) {
        EXPECT_FALSE(platform.write(element, AttributeName::size, Size{small, 100})) << small;
        EXPECT_FALSE(platform.write(element, AttributeName::size, Size{100, small})) << small;
    }
    EXPECT_FALSE(platform.write(element, AttributeName::position, Size{100, 100}));
    EXPECT_FALSE(platform.write(element, AttributeName::size, Point{100, 100}));
    EXPECT_FALSE(platform.write(element, AttributeName::minimized, true));
    EXPECT_FALSE(platform.write(element, AttributeName::role, std::string("AXWindow")));
    EXPECT_FALSE(
        platform.write(platform.systemWideElement(), AttributeName::position, Point{1, 1}));
    EXPECT_FALSE(platform.write(nullptr, AttributeName::position, Point{1, 1}));
    EXPECT_THAT(desktop().observer().messages(), SizeIs(0));
    EXPECT_EQ(window->frame(), before);
}

TEST_P(X11WindowPlacement, primaryMonitorNeedNotLieAtTheRootsOrigin) {
    const MonitorLayout layout = MonitorLayout::portraitAndPrimaryLandscape();
    start(layout);
    const PixelRect primary = layout.primaryMonitor();
    ASSERT_NE(primary.x, 0);
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    target.setFrame({0, 0, 960, 540});
    EXPECT_EQ(window->frame(), (PixelRect{primary.x, primary.y, 960, 540}));
    EXPECT_EQ(target.frame(), (Rect{0, 0, 960, 540}));
    // The other monitor lies left of the primary one.
    target.setFrame({-1000.4, 20, 500.3, 400});
    EXPECT_EQ(window->frame(), (PixelRect{primary.x - 1000, primary.y + 20, 500, 400}));
    EXPECT_EQ(target.frame(), (Rect{-1000.4, 20, 500.3, 400}));
}

TEST_P(X11WindowPlacement, placeThatOnlyTheNewSizeFitsIsReached) {
    start();
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    for (int turn = 0; turn < 10; ++turn) {
        target.setFrame({0, 0, 960, 1080});
        EXPECT_EQ(window->frame(), (PixelRect{0, 0, 960, 1080}));
        // At its height of now it would stick out at the bottom.
        target.setFrame({960, 540, 960, 540});
        EXPECT_EQ(window->frame(), (PixelRect{960, 540, 960, 540}));
        EXPECT_EQ(target.frame(), (Rect{960, 540, 960, 540}));
    }
}

TEST_P(X11WindowPlacement, placeBeyondTheTopLeftCornerIsAnsweredQuickly) {
    start();
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    const double seconds = vainSecondsFor([&] { target.setFrame({-200, -50, 700, 500}); });
    // metacity keeps title bars in sight; whatever came of it is what is read.
    EXPECT_EQ(target.frame(), rectOf(window->frame()));
    if (GetParam() != WindowManager::Kind::metacity) {
        EXPECT_EQ(window->frame(), (PixelRect{-200, -50, 700, 500}));
    }
    EXPECT_EQ(window->frame().width, 700);
    EXPECT_LT(seconds, patient);
}

TEST_P(X11WindowPlacement, stoppedProgramCostsAtMostTheTimeout) {
    startWithTheUsersTimeout();
    auto program = desktop().openProgram(
        {"xterm", "-class", "StoppedTerm", "-geometry", "60x20+200+200"}, "StoppedTerm");
    AXWindow target = adapter().window(program.window);
    ASSERT_TRUE(target.frame());
    program.process.signal(SIGSTOP);
    const double seconds = vainSecondsFor([&] { target.setFrame({100, 120, 700, 500}); });
    const bool isMoved = XClient::waitUntil([&] {
        adapter().connection->synchronize();
        const std::optional<Rect> became = target.frame();
        return became && became->origin() == Point{100, 120};
    });
    program.process.signal(SIGCONT);
    EXPECT_TRUE(isMoved);
    EXPECT_LT(seconds, 3 * X11WindowWriter::longestTimeout);
}

TEST_P(X11WindowPlacement, silentWindowManagerIsWaitedForOnce) {
    startWithTheUsersTimeout();
    const auto first = open(Kind::decorated);
    const auto second = open(Kind::decorated);
    AXWindow target = adapter().window(first->id());
    AXWindow other = adapter().window(second->id());
    put(target, {100, 100, 500, 400});
    HeldWindowManager held(desktop().windowManager(), desktop().observer());
    const double longest = X11WindowWriter::longestTimeout;
    double waited = 0;
    const double seconds = secondsFor([&] {
        waited = vainSecondsFor([&] { target.setFrame({300, 200, 700, 500}); });
    });
    EXPECT_GE(seconds, longest);
    EXPECT_LT(waited, 1.5 * longest) << "one change, one wait";
    EXPECT_LT(vainSecondsFor([&] { other.setFrame({0, 0, 700, 500}); }), 0.5 * longest);
    EXPECT_EQ(target.frame(), (Rect{100, 100, 500, 400})) << "nothing has come of it yet";

    held.letGo();
    EXPECT_TRUE(XClient::waitUntil([&] {
        return first->frame() == PixelRect{300, 200, 700, 500} &&
               second->frame() == PixelRect{0, 0, 700, 500};
    })) << "what was written applies late";
    adapter().connection->synchronize();
    EXPECT_EQ(target.frame(), (Rect{300, 200, 700, 500}));
    target.setFrame({10, 20, 600, 500});
    EXPECT_EQ(first->frame(), (PixelRect{10, 20, 600, 500})) << "and it is waited for again";
}

TEST_P(X11WindowPlacement, unroundedFrameIsReadWhenItIsAnsweredLate) {
    start();
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    target.setFrame({100, 100, 500, 400});
    HeldWindowManager held(desktop().windowManager(), desktop().observer());
    target.setFrame({300.3, 200.3, 700.4, 500.4});
    held.letGo();
    EXPECT_TRUE(XClient::waitUntil([&] {
        return window->frame() == PixelRect{300, 200, 701, 501};
    }));
    adapter().connection->synchronize();
    EXPECT_EQ(target.frame(), (Rect{300.3, 200.3, 700.4, 500.4}));
}

TEST_P(X11WindowPlacement, shorterTimeoutsOfWindowAndApplicationHold) {
    startWithTheUsersTimeout();
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    put(target, {100, 100, 500, 400});
    HeldWindowManager held(desktop().windowManager(), desktop().observer());
    adapter().platform.setMessagingTimeout(target.element(), 0.05);
    double waited = 0;
    const double seconds = secondsFor([&] {
        waited = vainSecondsFor([&] { target.setPosition({101, 100}); });
    });
    held.letGo();
    EXPECT_GE(seconds, 0.05);
    EXPECT_LT(waited, 0.2);

    EXPECT_TRUE(XClient::waitUntil([&] { return window->frame().x == 101; }));
    adapter().platform.setMessagingTimeout(target.element(), 5);
    adapter().platform.setMessagingTimeout(adapter().platform.applicationElement(getpid()), 0.08);
    put(target, {100, 100, 500, 400});
    HeldWindowManager heldAgain(desktop().windowManager(), desktop().observer());
    const double applications = secondsFor([&] {
        waited = vainSecondsFor([&] { target.setPosition({101, 100}); });
    });
    heldAgain.letGo();
    EXPECT_GE(applications, 0.08);
    EXPECT_LT(waited, 0.2);
}

TEST_P(X11WindowPlacement, windowThatDiesInTheMiddleIsNoError) {
    start();
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    ASSERT_TRUE(target.frame());
    // The window manager is held so that the window is gone before it answers.
    HeldWindowManager held(desktop().windowManager(), desktop().observer());
    xcb_destroy_window(window->connection(), window->id());
    window->roundTrip();
    const double seconds = vainSecondsFor([&] {
        EXPECT_FALSE(
            adapter().platform.write(target.element(), AttributeName::position, Point{100, 100}));
    });
    held.letGo();
    EXPECT_LT(seconds, patient);
    EXPECT_EQ(target.frame(), std::nullopt);
    EXPECT_EQ(target.pid(), std::nullopt);
    EXPECT_FALSE(target.isWindow());
    EXPECT_FALSE(adapter().connection->isLost());
}

TEST_P(X11WindowPlacement, programKilledWhileItsWindowIsWrittenToEndsTheWriteEarly) {
    startWithTheUsersTimeout();
    auto program =
        desktop().openProgram({"xterm", "-class", "DyingTerm", "-geometry", "60x20"}, "DyingTerm");
    AXWindow target = adapter().window(program.window);
    ASSERT_TRUE(target.frame());
    HeldWindowManager held(desktop().windowManager(), desktop().observer());
    program.process.signal(SIGKILL);
    const double seconds = vainSecondsFor([&] { target.setFrame({100, 100, 700, 500}); });
    held.letGo();
    EXPECT_LE(seconds, 1.2 * X11WindowWriter::longestTimeout);
    EXPECT_TRUE(XClient::waitUntil([&] {
        adapter().connection->synchronize();
        return !target.isWindow();
    }));
    EXPECT_EQ(target.pid(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Every, X11WindowPlacement, testing::ValuesIn(WindowManager::kinds),
                         nameOf);

}  // namespace
}  // namespace lumatile::desktop
