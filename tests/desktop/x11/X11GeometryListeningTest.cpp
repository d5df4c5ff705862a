#include "tests/desktop/support/ReplyWaits.h"
#include "tests/desktop/x11/X11DesktopTest.h"

#include "platform/x11/X11Event.h"

namespace lumatile::desktop {
namespace {

/// A plain window whose id is up to the test.
class PlainWindow : public XClient {
public:
    explicit PlainWindow(const std::string& display) : XClient(display), id_(newWindowId()) {}

    xcb_window_t id() const { return id_; }

    /// Also once more, after `destroy`, with the same id.
    void create() {
        xcb_create_window(connection(), XCB_COPY_FROM_PARENT, id_, root(), 200, 150, 400, 300, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen().root_visual, 0, nullptr);
        xcb_map_window(connection(), id_);
        roundTrip();
    }

    void destroy() {
        xcb_destroy_window(connection(), id_);
        roundTrip();
    }

private:
    xcb_window_t id_;
};

class X11GeometryListeningTest : public X11DesktopTest {
protected:
    bool isListed(xcb_window_t window) {
        const auto listed =
            desktop().observer().cardinals(desktop().observer().root(), "_NET_CLIENT_LIST");
        return std::find(listed.begin(), listed.end(), window) != listed.end();
    }

    bool waitUntilListed(xcb_window_t window, bool listed) {
        return XClient::waitUntil([&] { return isListed(window) == listed; });
    }

    /// As the hand does that drags it, while nobody asks where it is.
    void moveOnAndOn(XClient& client, xcb_window_t window) {
        constexpr std::uint32_t steps = 40;
        for (std::uint32_t step = 0; step < steps; ++step) {
            const std::array<std::uint32_t, 2> place{300 + step, 200 + step};
            xcb_configure_window(client.connection(), window,
                                 XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place.data());
        }
        client.roundTrip();
        waitForWindowManager();
        // What has been read is noted, and what was asked of the server then holds.
        adapter().connection->synchronize();
        adapter().connection->synchronize();
        ASSERT_TRUE(adapter().mirror.find(window)->isUnheard);
    }

    void waitForWindowManager() {
        // By a connection that tells the mirror nothing.
        X11Adapter other(desktop().display());
        other.mirror.refresh();
        X11WindowManagerProbe probe(*other.connection, other.mirror);
        for (int question = 0; question < 5; ++question) {
            probe.ask();
            ASSERT_TRUE(XClient::waitUntil([&] {
                other.connection->synchronize();
                return probe.isAnswered();
            }));
        }
    }
};

TEST_P(X11GeometryListeningTest, aWindowThatMovesOnAndOnWakesNobodyUp) {
    start();
    const auto window = open(TestWindow::Kind::decorated);
    const AXWindow target = adapter().window(window->id());
    ASSERT_TRUE(target.frame());
    settle();
    target.frame();
    moveOnAndOn(*window, window->id());
    int heard = 0;
    const auto subscription = adapter().connection->observe([&](const xcb_generic_event_t& event) {
        heard += X11Event::type(event) == XCB_CONFIGURE_NOTIFY ? 1 : 0;
    });
    window->place({400, 300, 500, 400});
    window->place({410, 310, 510, 410});
    adapter().connection->synchronize();
    EXPECT_EQ(heard, 0);
    {
        const ReplyWaits waits(adapter().connection->get());
        EXPECT_EQ(target.frame(), (Rect{410, 310, 510, 410}));
        EXPECT_LE(waits.roundTrips(), 1U);
    }
    EXPECT_FALSE(adapter().mirror.find(window->id())->isUnheard);
    window->place({420, 320, 520, 420});
    adapter().connection->synchronize();
    EXPECT_GT(heard, 0) << "whoever has asked may ask again";
    EXPECT_EQ(target.frame(), (Rect{420, 320, 520, 420}));
    EXPECT_TRUE(adapter().window(window->id()).isWindow());
    EXPECT_EQ(target.key(), adapter().window(window->id()).key());
}

TEST_P(X11GeometryListeningTest, aSnapAfterItIsAsExactAsEver) {
    start();
    const auto window = open(TestWindow::Kind::decorated);
    AXWindow target = adapter().window(window->id());
    ASSERT_TRUE(target.frame());
    for (const Rect& rect : {Rect{0, 0, 960, 1080}, Rect{960, 0, 960, 1080}}) {
        moveOnAndOn(*window, window->id());
        target.setFrame(rect);
        EXPECT_EQ(rectOf(window->frame()), rect);
        EXPECT_EQ(target.frame(), rect);
    }
}

TEST_P(X11GeometryListeningTest, aWindowThatGoesMeanwhileIsGone) {
    start();
    const auto window = open(TestWindow::Kind::decorated);
    const AXWindow target = adapter().window(window->id());
    ASSERT_TRUE(target.frame());
    moveOnAndOn(*window, window->id());
    window->close();
    adapter().connection->synchronize();
    EXPECT_FALSE(target.frame());
    EXPECT_FALSE(target.isWindow());
    EXPECT_EQ(adapter().mirror.find(window->id()), nullptr);
}

TEST_P(X11GeometryListeningTest, aWindowThatTakesItsIdMeanwhileIsAnotherOne) {
    start();
    PlainWindow client(desktop().display());
    client.create();
    ASSERT_TRUE(waitUntilListed(client.id(), true));
    settle();
    const AXWindow target = adapter().window(client.id());
    ASSERT_TRUE(target.frame());
    moveOnAndOn(client, client.id());
    client.destroy();
    ASSERT_TRUE(waitUntilListed(client.id(), false));
    waitForWindowManager();
    client.create();
    ASSERT_TRUE(waitUntilListed(client.id(), true));
    waitForWindowManager();
    adapter().connection->synchronize();
    EXPECT_FALSE(target.frame());
    const AXWindow second = adapter().window(client.id());
    EXPECT_NE(second.key(), target.key());
    const auto frame = outerFrame(client, client.id());
    ASSERT_TRUE(frame);
    EXPECT_EQ(second.frame(), rectOf(*frame));
}

TEST_P(X11GeometryListeningTest, aWindowThatGetsAnotherFrameMeanwhileIsFollowed) {
    start();
    const auto window = open(TestWindow::Kind::decorated);
    ASSERT_TRUE(adapter().window(window->id()).frame());
    moveOnAndOn(*window, window->id());
    xcb_unmap_window(window->connection(), window->id());
    ASSERT_TRUE(waitUntilListed(window->id(), false));
    waitForWindowManager();
    window->map();
    waitForWindowManager();
    adapter().connection->synchronize();
    EXPECT_EQ(adapter().window(window->id()).frame(), rectOf(window->frame()));
    window->place({420, 320, 520, 420});
    adapter().connection->synchronize();
    EXPECT_EQ(adapter().window(window->id()).frame(), (Rect{420, 320, 520, 420}));
}

INSTANTIATE_TEST_SUITE_P(Every, X11GeometryListeningTest, testing::ValuesIn(WindowManager::kinds),
                         nameOf);

}  // namespace
}  // namespace lumatile::desktop
