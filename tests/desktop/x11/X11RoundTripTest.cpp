#include <algorithm>
#include <string>

#include "tests/desktop/support/ReplyWaits.h"
#include "tests/desktop/x11/X11DesktopTest.h"

namespace lumatile::desktop {
namespace {

class X11RoundTrips : public X11DesktopTest {
protected:
    /// Many windows of several clients of the server, all managed.
    std::vector<std::unique_ptr<TestWindow>> openMany(std::size_t count) {
        std::vector<std::unique_ptr<TestWindow>> windows;
        for (std::size_t index = 0; index < count; ++index) {
            TestWindow::Options options;
            options.area = {static_cast<int>(100 + 7 * (index % 50)),
                            static_cast<int>(100 + 11 * (index / 50)), 300, 200};
            windows.push_back(std::make_unique<TestWindow>(desktop().display(), options));
            xcb_map_window(windows.back()->connection(), windows.back()->id());
            xcb_flush(windows.back()->connection());
        }
        // Some hundred of them take a window manager many seconds on a busy machine.
        const bool managed = XClient::waitUntil(
            [&] {
                return desktop()
                           .observer()
                           .cardinals(desktop().observer().root(), "_NET_CLIENT_LIST_STACKING")
                           .size() >= count;
            },
            Deadline::in(std::chrono::seconds(60)));
        EXPECT_TRUE(managed);
        windows.back()->activate();
        settle();
        return windows;
    }

    /// Every running application's snappable windows, as pixel shift asks for them.
    std::size_t enumerate(X11Adapter& on) {
        std::vector<Pid> pids;
        for (const RunningApplication& application : on.workspace.runningApplications()) {
            pids.push_back(application.pid);
        }
        return on.bridge.windowsOfApplications(pids).size();
    }
};

TEST_P(X11RoundTrips, countIsOfWaitsThatCouldNotBeShared) {
    start();
    xcb_connection_t* connection = adapter().connection->get();
    const ReplyWaits waits(connection);
    const auto answer = [&](xcb_get_input_focus_cookie_t cookie) {
        const XReply<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(connection, cookie, nullptr));
    };
    const auto first = xcb_get_input_focus(connection);
    const auto second = xcb_get_input_focus(connection);
    answer(first);
    answer(second);
    EXPECT_EQ(waits.roundTrips(), 1U);
    answer(xcb_get_input_focus(connection));
    EXPECT_EQ(waits.roundTrips(), 2U);
    EXPECT_EQ(waits.replies(), 3U);
}

TEST_P(X11RoundTrips, twoHundredWindowsAreEnumeratedInThree) {
    start();
    constexpr std::size_t count = 200;
    const auto windows = openMany(count);
    // The adapter of the fixture has looked away until now; another one has seen nothing at all.
    X11Adapter fresh(desktop().display());
    for (X11Adapter* on : {&adapter(), &fresh}) {
        const ReplyWaits waits(on->connection->get());
        EXPECT_EQ(enumerate(*on), count);
        EXPECT_LE(waits.roundTrips(), 3U);
        EXPECT_GE(waits.roundTrips(), 1U);
        RecordProperty("first", static_cast<int>(waits.roundTrips()));
    }
    {
        const ReplyWaits waits(fresh.connection->get());
        EXPECT_EQ(enumerate(fresh), count);
        EXPECT_EQ(waits.roundTrips(), 0U) << "nothing has changed";
    }
    for (const auto& window : windows) {
        window->setText(window->id(), "WM_CLASS", XCB_ATOM_STRING, std::string("a\0New\0", 6));
        window->roundTrip();
    }
    fresh.connection->synchronize();
    const ReplyWaits waits(fresh.connection->get());
    EXPECT_EQ(enumerate(fresh), count);
    EXPECT_EQ(fresh.workspace.runningApplications().front().applicationId, "new");
    EXPECT_EQ(waits.roundTrips(), 1U) << "all changes together";
}

TEST_P(X11RoundTrips, framesOfMovedWindowsAreReadTogether) {
    start();
    const auto windows = openMany(20);
    ASSERT_EQ(enumerate(adapter()), windows.size());
    std::vector<AXWindow> targets;
    for (const auto& window : windows) {
        targets.push_back(adapter().window(window->id()));
    }
    ASSERT_TRUE(targets.front().frame());
    int x = 40;
    for (const auto& window : windows) {
        window->place({x++, 60, 320, 240});
    }
    settle();
    const ReplyWaits waits(adapter().connection->get());
    x = 40;
    for (const AXWindow& target : targets) {
        EXPECT_EQ(target.frame(), (Rect{static_cast<double>(x++), 60, 320, 240}));
    }
    // A client right below its frame needs none: the events of both tell its place. kwin has a
    // window between the two, so there all are asked for together.
    const bool isNestedDeeper = GetParam() == desktop::WindowManager::Kind::kwin;
    EXPECT_EQ(waits.roundTrips(), isNestedDeeper ? 1U : 0U);
}

TEST_P(X11RoundTrips, readsAfterAWriteNeedNoneOrOne) {
    start();
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    target.setFrame({10, 20, 500, 400});
    target.setFrame({300, 200, 700, 500});
    const ReplyWaits waits(adapter().connection->get());
    EXPECT_EQ(target.frame(), (Rect{300, 200, 700, 500}));
    EXPECT_LE(waits.roundTrips(), 1U);
}

// Pixel shift moves every window of the desktop every few minutes: what the server says of the move
// is enough.
TEST_P(X11RoundTrips, aMoveNeedsNone) {
    start();
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    target.setFrame({300, 200, 700, 500});
    settle();
    target.setPosition({301, 200});
    ASSERT_EQ(target.frame(), (Rect{301, 200, 700, 500}));
    settle();
    const ReplyWaits waits(adapter().connection->get());
    for (const Point& point : {Point{302, 200}, Point{302, 201}, Point{301, 201}}) {
        target.setPosition(point);
        EXPECT_EQ(target.frame(), (Rect{point.x, point.y, 700, 500}));
        const PixelRect became = window->frame();
        EXPECT_EQ((Point{static_cast<double>(became.x), static_cast<double>(became.y)}), point);
    }
    EXPECT_EQ(waits.roundTrips(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Every, X11RoundTrips, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
