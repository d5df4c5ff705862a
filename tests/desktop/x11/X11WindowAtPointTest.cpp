#include "tests/desktop/x11/X11DesktopTest.h"

namespace lumatile::desktop {
namespace {

class X11WindowAtPoint : public X11DesktopTest {
protected:
    bool finds(const Point& point, xcb_window_t window) {
        const std::shared_ptr<AXWindow> found = adapter().bridge.windowAt(point);
        return found && found->key() == AXElementKey{adapter().element(window)};
    }
};

TEST_P(X11WindowAtPoint, titleBarAndInsideBothBelongToTheWindow) {
    start();
    for (const Kind kind : {Kind::decorated, Kind::undecorated, Kind::clientSide}) {
        const auto window = open(kind);
        window->place({300, 200, 700, 500});
        adapter().connection->synchronize();
        EXPECT_TRUE(finds({650, 203}, window->id())) << toString(kind);
        EXPECT_TRUE(finds({650.75, 450.5}, window->id())) << toString(kind);
        // Its first row; a corner may be a round one.
        EXPECT_TRUE(finds({320, 200}, window->id())) << toString(kind);
    }
}

TEST_P(X11WindowAtPoint, topmostWindowIsFound) {
    start();
    const auto below = open(Kind::decorated);
    below->place({300, 200, 700, 500});
    const auto above = open(Kind::decorated);
    above->place({350, 250, 300, 300});
    adapter().connection->synchronize();
    EXPECT_TRUE(finds({400, 400}, above->id()));
    EXPECT_TRUE(finds({900, 400}, below->id()));
}

TEST_P(X11WindowAtPoint, aWindowThatOnlyTakesInputIsLookedThrough) {
    start();
    const auto below = open(Kind::decorated);
    below->place({300, 200, 700, 500});
    const auto above = open(Kind::decorated);
    above->place({350, 250, 300, 300});
    const xcb_window_t glass = xcb_generate_id(above->connection());
    const std::uint32_t unmanaged = 1;
    xcb_create_window(above->connection(), XCB_COPY_FROM_PARENT, glass, above->root(), 0, 0, 1920,
                      1080, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
    xcb_map_window(above->connection(), glass);
    above->roundTrip();
    adapter().connection->synchronize();
    EXPECT_TRUE(finds({400, 400}, above->id()));
    EXPECT_TRUE(finds({900, 203}, below->id())) << "a title bar";
    EXPECT_EQ(adapter().bridge.windowAt({1500, 900}), nullptr);
    xcb_destroy_window(above->connection(), glass);
}

TEST_P(X11WindowAtPoint, bareDesktopHoldsNothing) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    EXPECT_EQ(adapter().bridge.windowAt({1500, 900}), nullptr);
    EXPECT_EQ(adapter().bridge.windowAt({100000, 900}), nullptr);
    EXPECT_EQ(adapter().bridge.windowAt({std::numeric_limits<double>::quiet_NaN(), 0}), nullptr);
}

TEST_P(X11WindowAtPoint, nestedWindowsOfAProgramBelongToItsTopLevel) {
    start();
    const auto window = open(Kind::undecorated);
    window->place({300, 200, 700, 500});
    xcb_window_t parent = window->id();
    std::vector<xcb_window_t> nested;
    for (int level = 1; level <= 12; ++level) {
        const xcb_window_t child = xcb_generate_id(window->connection());
        xcb_create_window(window->connection(), XCB_COPY_FROM_PARENT, child, parent, 10, 10, 400,
                          400, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(window->connection(), child);
        nested.push_back(child);
        parent = child;
    }
    window->roundTrip();
    // The innermost is twelve levels deep, which is one too many; the one around it is not.
    EXPECT_EQ(adapter().bridge.windowAt({300 + 12 * 10 + 1, 200 + 12 * 10 + 1}), nullptr);
    EXPECT_TRUE(finds({300 + 11 * 10 + 1, 200 + 11 * 10 + 1}, window->id()));
}

TEST_P(X11WindowAtPoint, primaryMonitorsCornerIsTheOrigin) {
    start(MonitorLayout::portraitAndPrimaryLandscape());
    const auto window = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    target.setFrame({10, 20, 500, 400});
    EXPECT_TRUE(finds({200, 200}, window->id()));
    target.setFrame({-600, 20, 500, 400});
    EXPECT_TRUE(finds({-300, 200}, window->id()));
}

TEST_P(X11WindowAtPoint, parentOfAClientIsItsApplication) {
    start();
    const auto window = open(Kind::decorated);
    const auto parent = AttributeReader::element(
        adapter().platform, adapter().element(window->id()), AttributeName::parent);
    ASSERT_TRUE(parent);
    EXPECT_EQ(AXElementKey{*parent}, AXElementKey{adapter().platform.applicationElement(getpid())});
    EXPECT_EQ(adapter().platform.read(*parent, AttributeName::parent), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(Every, X11WindowAtPoint, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
