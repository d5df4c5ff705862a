#include "platform/x11/X11ScreenList.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xcb/randr.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "displays/NSScreenProvider.h"
#include "tests/desktop/support/MonitorLayout.h"
#include "tests/desktop/support/ReplyWaits.h"
#include "tests/desktop/support/TestDesktop.h"
#include "tests/desktop/support/WindowManagerAnswer.h"

namespace lumatile {

void PrintTo(const PlatformScreen& screen, std::ostream* out) {
    for (const Rect& rect : {screen.frame, screen.visibleFrame}) {
        *out << "[" << rect.x << "," << rect.y << " " << rect.width << "x" << rect.height << "]";
    }
}

}  // namespace lumatile

namespace lumatile::desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// The list under test, on a connection of its own.
class ListedScreens {
public:
    explicit ListedScreens(const std::string& display)
        : connection_(X11Connection::open(display)),
          monitors_(*connection_),
          list_(*connection_, monitors_) {}

    /// After all that other clients of the server have done has been told.
    std::vector<PlatformScreen> screens() {
        connection_->synchronize();
        return list_.screens();
    }
    X11ScreenList& list() { return list_; }

    /// The list's own round trips in a question.
    std::size_t roundTrips() {
        connection_->synchronize();
        const ReplyWaits waits(connection_->get());
        list_.screens();
        return waits.roundTrips();
    }

private:
    std::unique_ptr<X11Connection> connection_;
    X11Monitors monitors_;
    X11ScreenList list_;
};

PlatformScreen bare(const Rect& frame) { return {frame, frame}; }

// --- Frames, without anything on the screens ---

TEST(X11ScreenList, aSingleScreenIsItsOwnFrame) {
    const PrivateServer server(MonitorLayout::landscape());
    EXPECT_THAT(ListedScreens(server.display()).screens(), ElementsAre(bare({0, 0, 1920, 1080})));
}

TEST(X11ScreenList, aPortraitScreen) {
    const PrivateServer server(MonitorLayout::portrait());
    EXPECT_THAT(ListedScreens(server.display()).screens(), ElementsAre(bare({0, 0, 1080, 1920})));
}

TEST(X11ScreenList, yGrowsUpwardsFromThePrimarysLowerEdge) {
    const PrivateServer server(MonitorLayout::landscapeAndPortrait());
    // The portrait screen hangs 840 pixels below the landscape one.
    EXPECT_THAT(ListedScreens(server.display()).screens(),
                ElementsAre(bare({0, 0, 1920, 1080}), bare({1920, -840, 1080, 1920})));
}

TEST(X11ScreenList, thePrimaryNeedNotLieAtTheRootsOrigin) {
    const PrivateServer server(MonitorLayout::portraitAndPrimaryLandscape());
    ListedScreens listed(server.display());
    EXPECT_THAT(listed.screens(),
                ElementsAre(bare({0, 0, 1920, 1080}), bare({-1080, -540, 1080, 1920})));
    EXPECT_THAT(NSScreenProvider(listed.list()).screens(),
                ElementsAre(Rect{0, 0, 1920, 1080}, Rect{-1080, -300, 1080, 1920}));
}

TEST(X11ScreenList, aScreenAboveThePrimaryOne) {
    const PrivateServer server({"stacked", {{0, 0, 1920, 1080}, {0, 1080, 1920, 1080}}, 1});
    ListedScreens listed(server.display());
    EXPECT_THAT(listed.screens(),
                ElementsAre(bare({0, 0, 1920, 1080}), bare({0, 1080, 1920, 1080})));
    EXPECT_THAT(NSScreenProvider(listed.list()).screens(),
                ElementsAre(Rect{0, 0, 1920, 1080}, Rect{0, -1080, 1920, 1080}));
}

TEST(X11ScreenList, isEmptyWhenTheServerIsGone) {
    PrivateServer server(MonitorLayout::landscape());
    ListedScreens listed(server.display());
    ASSERT_EQ(listed.screens().size(), 1U);
    server.stop();
    EXPECT_THAT(listed.screens(), IsEmpty());
}

// --- Panels, under every window manager ---

class PanelsTest : public testing::TestWithParam<WindowManager::Kind> {};

TEST_P(PanelsTest, countOnTheirOwnMonitorAlone) {
    TestDesktop desktop(MonitorLayout::landscapeAndPortrait(), GetParam());
    ListedScreens listed(desktop.display());
    EXPECT_THAT(listed.screens(),
                ElementsAre(bare({0, 0, 1920, 1080}), bare({1920, -840, 1080, 1920})));

    // Along the lower edge of the shorter monitor: the strut counts from the root's height.
    const auto panel = desktop.openPanel(0, 40);
    EXPECT_THAT(listed.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 40, 1920, 1040}},
                            bare({1920, -840, 1080, 1920})));
    const auto other = desktop.openPanel(1, 56);
    const std::vector<PlatformScreen> both = {{{0, 0, 1920, 1080}, {0, 40, 1920, 1040}},
                                              {{1920, -840, 1080, 1920}, {1920, -784, 1080, 1864}}};
    EXPECT_EQ(listed.screens(), both);
    EXPECT_THAT(NSScreenProvider(listed.list()).screens(),
                ElementsAre(Rect{0, 0, 1920, 1040}, Rect{1920, 0, 1080, 1864}));

    panel->close();
    EXPECT_THAT(listed.screens(), ElementsAre(bare({0, 0, 1920, 1080}), both[1]));
}

TEST_P(PanelsTest, atTheInnerSeamTakeNothingFromTheOtherMonitor) {
    TestDesktop desktop({"pair", {{0, 0, 1920, 1080}, {1920, 0, 1080, 1920}}, 0}, GetParam());
    ListedScreens listed(desktop.display());
    TestWindow::Options options;
    options.kind = TestWindow::Kind::dock;
    options.area = {1860, 0, 60, 1080};
    options.strut = {0, 3000 - 1860, 0, 0, 0, 0, 0, 1079, 0, 0, 0, 0};
    TestWindow panel(desktop.display(), options);
    panel.map();
    EXPECT_THAT(listed.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 0, 1860, 1080}},
                            bare({1920, -840, 1080, 1920})));
}

TEST_P(PanelsTest, ofTheSimplerKindGoAlongTheWholeEdge) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    ListedScreens listed(desktop.display());
    TestWindow::Options options;
    options.kind = TestWindow::Kind::dock;
    options.area = {0, 0, 1920, 28};
    TestWindow panel(desktop.display(), options);
    xcb_delete_property(panel.connection(), panel.id(), panel.atom("_NET_WM_STRUT_PARTIAL"));
    panel.setCardinals(panel.id(), "_NET_WM_STRUT", XCB_ATOM_CARDINAL, {0, 0, 28, 0});
    panel.map();
    EXPECT_THAT(listed.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 0, 1920, 1052}}));
}

TEST_P(PanelsTest, thatChangeTheirMindAreSeenAtTheNextRequest) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    ListedScreens listed(desktop.display());
    const auto panel = desktop.openPanel(0, 40);
    ASSERT_THAT(listed.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 40, 1920, 1040}}));
    panel->setCardinals(panel->id(), "_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL,
                        {0, 0, 0, 90, 0, 0, 0, 0, 0, 0, 0, 1919});
    panel->roundTrip();
    EXPECT_THAT(listed.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 90, 1920, 990}}));
    // Numbers that are no strut at all: the plain form says nothing either.
    xcb_delete_property(panel->connection(), panel->id(), panel->atom("_NET_WM_STRUT"));
    panel->setCardinals(panel->id(), "_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL, {0, 0, 0, 90, 0});
    panel->roundTrip();
    EXPECT_THAT(listed.screens(), ElementsAre(bare({0, 0, 1920, 1080})));
    panel->setCardinals(panel->id(), "_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL,
                        std::vector<std::uint32_t>(100000, 30));
    panel->roundTrip();
    EXPECT_THAT(listed.screens(), ElementsAre(bare({0, 0, 1920, 1080})));
}

TEST_P(PanelsTest, hotPlugIsSeenAtTheNextRequest) {
    TestDesktop desktop(MonitorLayout::landscapeAndPortrait(), GetParam());
    ListedScreens listed(desktop.display());
    const auto panel = desktop.openPanel(0, 40);
    ASSERT_EQ(listed.screens().size(), 2U);
    // The root keeps its size, so what the panel states still holds.
    desktop.server().unplug(1);
    EXPECT_THAT(listed.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 40, 1920, 1040}}));
    desktop.arrange(MonitorLayout::landscapeAndPortrait());
    EXPECT_EQ(listed.screens().size(), 2U);
    desktop.arrange(MonitorLayout::portrait());
    desktop.layPanel(*panel, 0, 40);
    panel->roundTrip();
    EXPECT_THAT(listed.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1080, 1920}, {0, 40, 1080, 1880}}));
}

TEST_P(PanelsTest, countEvenWhenAnOrdinaryWindowStatesAStrut) {
    // Some panels are no docks by type; what reserves room is the strut.
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    ListedScreens listed(desktop.display());
    TestWindow::Options options;
    options.kind = TestWindow::Kind::undecorated;
    options.area = {0, 0, 1920, 32};
    const auto window = desktop.openWindow(options);
    window->setCardinals(window->id(), "_NET_WM_STRUT_PARTIAL", XCB_ATOM_CARDINAL,
                         {0, 0, 32, 0, 0, 0, 0, 0, 0, 1919, 0, 0});
    window->roundTrip();
    EXPECT_THAT(listed.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 0, 1920, 1048}}));
    // Put away it reserves nothing.
    window->ask(window->id(), "WM_CHANGE_STATE", {3});
    ASSERT_TRUE(XClient::waitUntil([&] { return window->hasState("_NET_WM_STATE_HIDDEN"); }));
    EXPECT_TRUE(XClient::waitUntil([&] {
        return listed.screens() == std::vector{bare({0, 0, 1920, 1080})};
    }));
}

TEST_P(PanelsTest, areAskedAboutAgainOnlyWhenSomethingHasChanged) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    ListedScreens listed(desktop.display());
    const auto panel = desktop.openPanel(0, 40);
    const auto window = desktop.openWindow({});
    const std::vector<PlatformScreen> screens = {{{0, 0, 1920, 1080}, {0, 40, 1920, 1040}}};
    ASSERT_EQ(listed.screens(), screens);
    // What window managers state in several steps, some of them when they are idle, may have been
    // told half by the first question.
    ASSERT_TRUE(XClient::waitUntil([&] {
        constexpr int questions = 5;
        for (int question = 0; question < questions; ++question) {
            waitForWindowManager(*window);
        }
        return listed.roundTrips() == 0;
    }));
    for (const int x : {300, 301, 340}) {
        window->place({x, 200, 500, 400});
        EXPECT_EQ(listed.roundTrips(), 0U) << "a window that moves";
    }
    EXPECT_EQ(listed.screens(), screens);
    // A window without a strut: the list of windows, and the windows.
    const auto another = desktop.openWindow({});
    EXPECT_GT(listed.roundTrips(), 0U);
    EXPECT_EQ(listed.screens(), screens);
}

TEST_P(PanelsTest, thatArePutAwayKeepNothing) {
    TestDesktop desktop(MonitorLayout::landscape(), GetParam());
    ListedScreens listed(desktop.display());
    const auto panel = desktop.openPanel(0, 40);
    ASSERT_THAT(listed.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 40, 1920, 1040}}));
    const xcb_window_t window = panel->id();
    xcb_unmap_window(panel->connection(), window);
    panel->roundTrip();
    EXPECT_THAT(listed.screens(), ElementsAre(bare({0, 0, 1920, 1080})));
    ASSERT_TRUE(XClient::waitUntil([&] { return !panel->isManaged(); }));
    // It may still have to give the panel back.
    waitForWindowManager(*panel);
    panel->map();
    EXPECT_THAT(listed.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 40, 1920, 1040}}));
    // Gone without a farewell.
    xcb_destroy_window(panel->connection(), window);
    panel->roundTrip();
    EXPECT_THAT(listed.screens(), ElementsAre(bare({0, 0, 1920, 1080})));
}

INSTANTIATE_TEST_SUITE_P(Managers, PanelsTest, testing::ValuesIn(WindowManager::kinds),
                         [](const auto& tested) { return toString(tested.param); });

// --- Panels as a window manager of the test's own lists them, so that each event comes alone ---

class WatchedPanelTest : public testing::Test {
protected:
    WatchedPanelTest() {
        frame_ = child(client_.root());
        panel_ = child(frame_);
        list({panel_});
        reserve("_NET_WM_STRUT_PARTIAL", {0, 0, 0, 40, 0, 0, 0, 0, 0, 0, 0, 1919});
        xcb_map_window(client_.connection(), frame_);
        xcb_map_window(client_.connection(), panel_);
        settle();
        EXPECT_EQ(listed_.screens(), withPanel(40));
        EXPECT_EQ(listed_.roundTrips(), 0U);
    }

    xcb_window_t child(xcb_window_t parent) {
        const xcb_window_t window = xcb_generate_id(client_.connection());
        const std::uint32_t isUnmanaged = 1;
        xcb_create_window(client_.connection(), XCB_COPY_FROM_PARENT, window, parent, 0, 0, 100, 40,
                          0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT, &isUnmanaged);
        return window;
    }

    void list(const std::vector<std::uint32_t>& windows) {
        client_.setCardinals(client_.root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, windows);
    }

    void reserve(const std::string& property, const std::vector<std::uint32_t>& strut) {
        client_.setCardinals(panel_, property, XCB_ATOM_CARDINAL, strut);
    }

    void settle() { client_.roundTrip(); }

    static std::vector<PlatformScreen> withPanel(double height) {
        return {{{0, 0, 1920, 1080}, {0, height, 1920, 1080 - height}}};
    }

    PrivateServer server_{MonitorLayout::landscape(), PrivateServer::Kind::virtualFramebuffer};
    XClient client_{server_.display()};
    ListedScreens listed_{server_.display()};
    xcb_window_t frame_ = XCB_WINDOW_NONE;
    xcb_window_t panel_ = XCB_WINDOW_NONE;
};

TEST_F(WatchedPanelTest, isSeenToChangeItsStrut) {
    reserve("_NET_WM_STRUT_PARTIAL", {0, 0, 0, 70, 0, 0, 0, 0, 0, 0, 0, 1919});
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(70));
    xcb_delete_property(client_.connection(), panel_, client_.atom("_NET_WM_STRUT_PARTIAL"));
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(0));
    reserve("_NET_WM_STRUT", {0, 0, 0, 50});
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(50));
    EXPECT_EQ(listed_.roundTrips(), 0U);
}

TEST_F(WatchedPanelTest, isSeenToGoInsideItsFrame) {
    xcb_unmap_window(client_.connection(), panel_);
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(0));
    xcb_map_window(client_.connection(), panel_);
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(40));
}

TEST_F(WatchedPanelTest, isSeenToGoWithItsFrame) {
    xcb_unmap_window(client_.connection(), frame_);
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(0));
    xcb_map_window(client_.connection(), frame_);
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(40));
}

TEST_F(WatchedPanelTest, isSeenToChangeItsFrame) {
    const xcb_window_t unmapped = child(client_.root());
    xcb_reparent_window(client_.connection(), panel_, unmapped, 0, 0);
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(0));
    xcb_map_window(client_.connection(), unmapped);
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(40));
    xcb_reparent_window(client_.connection(), frame_, child(client_.root()), 0, 0);
    settle();
    EXPECT_EQ(listed_.roundTrips(), 0U) << "no frame of the panel's any longer";
    xcb_reparent_window(client_.connection(), unmapped, frame_, 0, 0);
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(0));
}

TEST_F(WatchedPanelTest, isSeenToBeDestroyedAndReplaced) {
    xcb_destroy_window(client_.connection(), panel_);
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(0));
    panel_ = child(frame_);
    reserve("_NET_WM_STRUT", {0, 0, 0, 60});
    xcb_map_window(client_.connection(), panel_);
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(0)) << "not listed yet";
    list({panel_});
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(60));
    reserve("_NET_WM_STRUT", {0, 0, 0, 30});
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(30));
}

TEST_F(WatchedPanelTest, isSeenWhenAnotherWindowGetsItsId) {
    xcb_destroy_window(client_.connection(), panel_);
    const std::uint32_t isUnmanaged = 1;
    xcb_create_window(client_.connection(), XCB_COPY_FROM_PARENT, panel_, frame_, 0, 0, 100, 40, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &isUnmanaged);
    xcb_map_window(client_.connection(), panel_);
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(0));
    reserve("_NET_WM_STRUT", {0, 0, 0, 80});
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(80));
}

TEST_F(WatchedPanelTest, isSeenToBeTakenOffTheList) {
    list({});
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(0));
    reserve("_NET_WM_STRUT_PARTIAL", {0, 0, 0, 90, 0, 0, 0, 0, 0, 0, 0, 1919});
    settle();
    EXPECT_EQ(listed_.roundTrips(), 0U) << "no window of the desktop any longer";
    list({panel_});
    settle();
    EXPECT_EQ(listed_.screens(), withPanel(90));
}

TEST_F(WatchedPanelTest, isSeenWhenMonitorsAreDeclaredRoundIt) {
    server_.arrange({"pair", {{0, 0, 1000, 1080}, {1000, 0, 920, 1080}}, 0});
    EXPECT_THAT(listed_.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1000, 1080}, {0, 40, 1000, 1040}},
                            PlatformScreen{{1000, 0, 920, 1080}, {1000, 40, 920, 1040}}));
    EXPECT_EQ(listed_.roundTrips(), 0U);
    // The second monitor goes; the first one is laid anew over the whole root.
    xcb_randr_delete_monitor(client_.connection(), client_.root(), client_.atom("MONITOR1"));
    settle();
    EXPECT_THAT(listed_.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1000, 1080}, {0, 40, 1000, 1040}}));
}

// --- Where no panel can be asked ---

class WorkAreaTest : public testing::Test {
protected:
    void state(const std::string& property, const std::vector<std::uint32_t>& numbers) {
        client_.setCardinals(client_.root(), property, XCB_ATOM_CARDINAL, numbers);
        client_.roundTrip();
    }

    PrivateServer server_{MonitorLayout::portraitAndPrimaryLandscape()};
    XClient client_{server_.display()};
    ListedScreens listed_{server_.display()};
    const std::vector<PlatformScreen> bareScreens_ = {bare({0, 0, 1920, 1080}),
                                                      bare({-1080, -540, 1080, 1920})};
};

TEST_F(WorkAreaTest, servesWhereThereIsNoListOfWindows) {
    // The root is 3000 × 1920 and the work area 30 pixels smaller at the left and 600 at the foot:
    // the primary monitor ends at 1380, the other one at 1920.
    state("_NET_WORKAREA", {30, 0, 2970, 1320});
    EXPECT_THAT(listed_.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 60, 1920, 1020}},
                            PlatformScreen{{-1080, -540, 1080, 1920}, {-1050, 60, 1050, 1320}}));
}

TEST_F(WorkAreaTest, isThatOfTheCurrentDesktop) {
    state("_NET_WORKAREA", {0, 0, 3000, 1920, 0, 340, 3000, 1580});
    EXPECT_EQ(listed_.screens(), bareScreens_);
    state("_NET_CURRENT_DESKTOP", {1});
    EXPECT_THAT(listed_.screens(),
                ElementsAre(PlatformScreen{{0, 0, 1920, 1080}, {0, 0, 1920, 1040}},
                            PlatformScreen{{-1080, -540, 1080, 1920}, {-1080, -540, 1080, 1580}}));
    state("_NET_CURRENT_DESKTOP", {2});
    EXPECT_EQ(listed_.screens(), bareScreens_);
}

TEST_F(WorkAreaTest, costsNothingWhileItStaysAsItIs) {
    state("_NET_WORKAREA", {30, 0, 2970, 1320});
    const std::vector<PlatformScreen> screens = listed_.screens();
    state("_NET_ACTIVE_WINDOW", {0});
    EXPECT_EQ(listed_.roundTrips(), 0U);
    EXPECT_EQ(listed_.screens(), screens);
    state("_NET_WORKAREA", {0, 0, 3000, 1920});
    EXPECT_GT(listed_.roundTrips(), 0U);
    EXPECT_EQ(listed_.screens(), bareScreens_);
}

TEST_F(WorkAreaTest, thatMakesNoSenseIsIgnored) {
    const std::vector<std::vector<std::uint32_t>> senseless = {
        {}, {1, 2, 3}, {0, 0, 0, 0}, {5000, 5000, 100, 100}, {0xffffffff, 0, 10, 10}};
    for (const std::vector<std::uint32_t>& numbers : senseless) {
        state("_NET_WORKAREA", numbers);
        EXPECT_EQ(listed_.screens(), bareScreens_) << testing::PrintToString(numbers);
    }
}

TEST_F(WorkAreaTest, countsForNothingWhereWindowsAreListed) {
    state("_NET_WORKAREA", {30, 0, 2970, 1320});
    client_.setCardinals(client_.root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW, {});
    client_.roundTrip();
    EXPECT_EQ(listed_.screens(), bareScreens_);
    // Windows that are gone, and numbers that were never windows.
    client_.setCardinals(client_.root(), "_NET_CLIENT_LIST", XCB_ATOM_WINDOW,
                         {0, 1, 0xdeadbeef, 0xffffffff});
    client_.roundTrip();
    EXPECT_EQ(listed_.screens(), bareScreens_);
}

}  // namespace
}  // namespace lumatile::desktop
