#include "platform/x11/X11Monitors.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <xcb/randr.h>

#include <array>
#include <memory>
#include <string>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/PrivateServer.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;

const PixelRect left{0, 0, 1920, 1080};
const PixelRect middle{1920, 0, 1080, 1920};
const PixelRect right{3000, 240, 800, 600};

class MonitorsTest : public testing::Test {
protected:
    void start(const MonitorLayout& layout,
               PrivateServer::Kind kind = PrivateServer::Kind::dummyDriver) {
        server_ = std::make_unique<PrivateServer>(layout, kind);
        connection_ = X11Connection::open(server_->display());
        ASSERT_TRUE(connection_);
        monitors_ = std::make_unique<X11Monitors>(*connection_);
    }

    /// Reads what the server has told so far, as the run loop does.
    void catchUp() {
        connection_->synchronize();
        connection_->dispatch();
    }

    std::unique_ptr<PrivateServer> server_;
    std::unique_ptr<X11Connection> connection_;
    std::unique_ptr<X11Monitors> monitors_;
};

TEST_F(MonitorsTest, thePrimaryComesFirstThenTheServersOrder) {
    start({"three", {left, middle, right}, 1}, PrivateServer::Kind::virtualFramebuffer);
    EXPECT_THAT(
        monitors_->rootRects(),
        ElementsAre(Rect{1920, 0, 1080, 1920}, Rect{0, 0, 1920, 1080}, Rect{3000, 240, 800, 600}));
    EXPECT_EQ(monitors_->rootSize(), (Size{3800, 1920}));
    server_->arrange({"three", {left, middle, right}, 2});
    catchUp();
    EXPECT_THAT(
        monitors_->rootRects(),
        ElementsAre(Rect{3000, 240, 800, 600}, Rect{0, 0, 1920, 1080}, Rect{1920, 0, 1080, 1920}));
}

TEST_F(MonitorsTest, withoutAPrimaryTheFirstIsIt) {
    start({"two", {left, middle}, 1});
    XClient client(server_->display());
    xcb_randr_set_output_primary(client.connection(), client.root(), XCB_NONE);
    client.roundTrip();
    catchUp();
    EXPECT_THAT(monitors_->rootRects(),
                ElementsAre(Rect{0, 0, 1920, 1080}, Rect{1920, 0, 1080, 1920}));
}

TEST_F(MonitorsTest, outputsThatShowTheSameAreOneMonitor) {
    start({"mirrored", {left, left, middle}, 1});
    EXPECT_THAT(monitors_->rootRects(),
                ElementsAre(Rect{0, 0, 1920, 1080}, Rect{1920, 0, 1080, 1920}));
}

TEST_F(MonitorsTest, convertsBetweenTheRootAndThePrimarysCorner) {
    start(MonitorLayout::portraitAndPrimaryLandscape());
    EXPECT_EQ(monitors_->fromRoot(Point{1080, 300}), (Point{0, 0}));
    EXPECT_EQ(monitors_->fromRoot(Point{0, 0}), (Point{-1080, -300}));
    EXPECT_EQ(monitors_->toRoot(Point{0.25, -1.5}), (Point{1080.25, 298.5}));
    EXPECT_EQ(monitors_->fromRoot(Rect{0, 0, 1080, 1920}), (Rect{-1080, -300, 1080, 1920}));
    EXPECT_EQ(monitors_->toRoot(Rect{1, 2, 3.5, 4.5}), (Rect{1081, 302, 3.5, 4.5}));
}

TEST_F(MonitorsTest, convertingAsksTheServerNothing) {
    start(MonitorLayout::portraitAndPrimaryLandscape());
    monitors_->rootRects();
    const auto before = xcb_no_operation(connection_->get()).sequence;
    for (int i = 0; i < 1000; ++i) {
        monitors_->fromRoot(Point{1, 2});
        monitors_->toRoot(Rect{1, 2, 3, 4});
        monitors_->rootSize();
    }
    EXPECT_EQ(xcb_no_operation(connection_->get()).sequence, before + 1);
}

TEST_F(MonitorsTest, followsThePrimaryWhenItMoves) {
    start(MonitorLayout::landscapeAndPortrait());
    EXPECT_EQ(monitors_->fromRoot(Point{1920, 0}), (Point{1920, 0}));
    server_->arrange({"swapped", {{1080, 0, 1920, 1080}, {0, 0, 1080, 1920}}, 0});
    catchUp();
    EXPECT_EQ(monitors_->fromRoot(Point{1080, 0}), (Point{0, 0}));
    EXPECT_EQ(monitors_->toRoot(Point{0, 0}), (Point{1080, 0}));
}

TEST_F(MonitorsTest, seesAMonitorThatIsUnplugged) {
    start(MonitorLayout::landscapeAndPortrait());
    EXPECT_EQ(monitors_->rootRects().size(), 2U);
    server_->unplug(1);
    catchUp();
    EXPECT_THAT(monitors_->rootRects(), ElementsAre(Rect{0, 0, 1920, 1080}));
    EXPECT_EQ(monitors_->rootSize(), (Size{3000, 1920}));
}

TEST_F(MonitorsTest, seesMonitorsThatAreOnlyDeclared) {
    start({"two", {left, middle}, 0}, PrivateServer::Kind::virtualFramebuffer);
    EXPECT_THAT(monitors_->rootRects(),
                ElementsAre(Rect{0, 0, 1920, 1080}, Rect{1920, 0, 1080, 1920}));
    server_->arrange({"two", {left, middle}, 1});
    catchUp();
    EXPECT_THAT(monitors_->rootRects(),
                ElementsAre(Rect{1920, 0, 1080, 1920}, Rect{0, 0, 1920, 1080}));
}

TEST_F(MonitorsTest, readsAnewWithoutAnyEventWhereAsked) {
    start({"two", {left, middle}, 0}, PrivateServer::Kind::virtualFramebuffer);
    monitors_->rootRects();
    server_->arrange({"two", {{0, 0, 800, 600}, {800, 0, 1080, 1920}}, 0});
    // No event has been read.
    monitors_->invalidate();
    EXPECT_THAT(monitors_->rootRects(),
                ElementsAre(Rect{0, 0, 800, 600}, Rect{800, 0, 1080, 1920}));
}

TEST(X11Monitors, withoutTheExtensionTheWholeRootIsTheMonitor) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    ChildProcess::Start start;
    start.command = {"Xvfb",      "-displayfd", std::to_string(ends[1]), "-extension", "RANDR",
                     "-screen",   "0",          "1600x900x24",           "-noreset",   "-ac",
                     "-nolisten", "tcp"};
    start.environment = inheritedEnvironment();
    start.keptDescriptor = ends[1];
    const ChildProcess server(start);
    close(ends[1]);
    std::string display = ":";
    char digit = 0;
    while (read(ends[0], &digit, 1) == 1 && digit != '\n') {
        display += digit;
    }
    close(ends[0]);
    const auto connection = X11Connection::open(display);
    ASSERT_TRUE(connection);
    X11Monitors monitors(*connection);
    EXPECT_THAT(monitors.rootRects(), ElementsAre(Rect{0, 0, 1600, 900}));
    EXPECT_EQ(monitors.rootSize(), (Size{1600, 900}));
    EXPECT_EQ(monitors.fromRoot(Point{5, 6}), (Point{5, 6}));
    connection->synchronize();
    connection->dispatch();
    EXPECT_FALSE(connection->isLost());
}

TEST_F(MonitorsTest, keepsWhatItKnewWhenTheServerGoes) {
    start(MonitorLayout::portraitAndPrimaryLandscape());
    monitors_->rootRects();
    server_->stop();
    monitors_->invalidate();
    EXPECT_EQ(monitors_->rootRects().size(), 2U);
    EXPECT_EQ(monitors_->toRoot(Point{0, 0}), (Point{1080, 300}));
}

}  // namespace
}  // namespace lumatile::desktop
