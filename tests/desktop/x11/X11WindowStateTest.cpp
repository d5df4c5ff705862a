#include <algorithm>

#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/x11/X11DesktopTest.h"

namespace lumatile::desktop {
namespace {

using testing::SizeIs;

const std::string maximizedVertically = "_NET_WM_STATE_MAXIMIZED_VERT";
const std::string maximizedHorizontally = "_NET_WM_STATE_MAXIMIZED_HORZ";
const std::string shaded = "_NET_WM_STATE_SHADED";
const std::string fullScreen = "_NET_WM_STATE_FULLSCREEN";
const std::string hidden = "_NET_WM_STATE_HIDDEN";

class X11WindowState : public X11DesktopTest {
protected:
    /// Whether the window's frame is mapped.
    bool isSeen(const TestWindow& window) {
        adapter().mirror.refresh();
        const X11Window* mirrored = adapter().mirror.find(window.id());
        if (mirrored == nullptr) {
            return false;
        }
        const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            window.connection(), xcb_get_window_attributes(window.connection(), mirrored->topLevel),
            nullptr));
        return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    }

    std::optional<bool> movable(const AXWindow& window) {
        adapter().connection->synchronize();
        return adapter().platform.isSettable(window.element(), AttributeName::position);
    }
};

TEST_P(X11WindowState, snapTakesAWindowOutOfMaximized) {
    start();
    for (const Kind kind : {Kind::decorated, Kind::undecorated, Kind::sizeIncrement}) {
        for (const auto& states :
             {std::vector{maximizedVertically, maximizedHorizontally},
              std::vector{maximizedVertically}, std::vector{maximizedHorizontally}}) {
            const auto window = open(kind);
            window->place({300, 200, 700, 500});
            window->setState(states, true);
            AXWindow target = adapter().window(window->id());
            EXPECT_EQ(movable(target), false);
            for (const Rect& rect : {Rect{120, 80, 803, 611}, Rect{0, 0, 960, 1080}}) {
                target.setFrame(rect);
                const PixelRect became = window->frame();
                EXPECT_EQ(target.frame(), rectOf(became));
                if (kind == Kind::sizeIncrement) {
                    EXPECT_EQ(became.x, rect.x);
                    EXPECT_EQ(became.y, rect.y);
                } else {
                    EXPECT_EQ(rectOf(became), rect) << toString(kind) << " " << states.size();
                }
                for (const std::string& state : states) {
                    EXPECT_FALSE(window->hasState(state));
                }
            }
            EXPECT_EQ(movable(target), true);
        }
    }
}

TEST_P(X11WindowState, toolkitWindowIsTakenOutOfMaximizedWithItsShadow) {
    // openbox has no compositor, and without one the toolkit draws no shadow.
    start(MonitorLayout::landscape(), {.compositing = GetParam() != WindowManager::Kind::openbox});
    auto program = desktop().openProgram({LUMATILE_CLIENT_SIDE_WINDOW}, "ClientSideWindow");
    DesktopObserver& observer = desktop().observer();
    const auto seen = [&] { return outerFrame(observer, program.window).value_or(PixelRect{}); };
    // A new size becomes the window's when the toolkit has drawn it, for which nobody waits for
    // ever.
    const auto comesToLieAt = [&](const Rect& rect) {
        return XClient::waitUntil([&] { return rectOf(seen()) == rect; });
    };
    const auto maximized = [&] {
        const auto states = observer.cardinals(program.window, "_NET_WM_STATE");
        return std::find(states.begin(), states.end(), observer.atom(maximizedVertically)) !=
               states.end();
    };
    const auto castsShadow = [&] {
        const auto shadow = observer.cardinals(program.window, "_GTK_FRAME_EXTENTS");
        return std::any_of(shadow.begin(), shadow.end(), [](auto side) { return side != 0; });
    };
    AXWindow target = adapter().window(program.window);
    for (const Rect& rect : {Rect{120, 80, 803, 611}, Rect{0, 0, 960, 1080}}) {
        target.setFrame(rect);
        EXPECT_TRUE(comesToLieAt(rect)) << seen();
        observer.ask(
            program.window, "_NET_WM_STATE",
            {1, observer.atom(maximizedVertically), observer.atom(maximizedHorizontally), 2});
        // The program is through with it when it has dropped its shadow.
        ASSERT_TRUE(XClient::waitUntil([&] {
            return maximized() && !castsShadow() && seen() == PixelRect{0, 0, 1920, 1080};
        }));
        adapter().connection->synchronize();
        target.setFrame(rect);
        EXPECT_TRUE(comesToLieAt(rect)) << seen();
        adapter().connection->synchronize();
        EXPECT_EQ(target.frame(), rect);
        EXPECT_FALSE(maximized());
    }
}

TEST_P(X11WindowState, snapToTheSameCornerLeavesMaximizedToo) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    window->setState({maximizedVertically, maximizedHorizontally}, true);
    AXWindow target = adapter().window(window->id());
    ASSERT_TRUE(XClient::waitUntil([&] {
        adapter().connection->synchronize();
        return target.frame() == Rect{0, 0, 1920, 1080};
    }));
    target.setFrame({0, 0, 960, 1080});
    EXPECT_EQ(window->frame(), (PixelRect{0, 0, 960, 1080}));
    EXPECT_FALSE(window->hasState(maximizedVertically));
    EXPECT_FALSE(window->hasState(maximizedHorizontally));
}

TEST_P(X11WindowState, snapToWhatAMaximizedWindowIsAnywayLeavesItAlone) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    window->setState({maximizedVertically, maximizedHorizontally}, true);
    AXWindow target = adapter().window(window->id());
    ASSERT_TRUE(XClient::waitUntil([&] {
        adapter().connection->synchronize();
        return target.frame() == Rect{0, 0, 1920, 1080};
    }));
    desktop().observer().forget();
    target.setFrame({0, 0, 1920, 1080});
    EXPECT_THAT(desktop().observer().messages(), SizeIs(0));
    EXPECT_TRUE(window->hasState(maximizedVertically));
}

TEST_P(X11WindowState, shadedWindowIsMovedShadedAndUnshadedByASize) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    window->setState({shaded}, true);
    AXWindow target = adapter().window(window->id());
    EXPECT_EQ(movable(target), false);
    // metacity states no difference between the two.
    EXPECT_EQ(
        AttributeReader::boolean(adapter().platform, target.element(), AttributeName::minimized),
        GetParam() == WindowManager::Kind::metacity);
    EXPECT_TRUE(
        adapter().platform.write(target.element(), AttributeName::position, Point{310, 200}));
    EXPECT_TRUE(window->hasState(shaded)) << "a shift does not undo what the user did";
    target.setFrame({100, 100, 700, 500});
    EXPECT_FALSE(window->hasState(shaded));
    EXPECT_EQ(window->frame(), (PixelRect{100, 100, 700, 500}));
    EXPECT_EQ(target.frame(), (Rect{100, 100, 700, 500}));
    EXPECT_EQ(movable(target), true);
}

TEST_P(X11WindowState, fullScreenWindowIsNeverTouched) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    window->setState({fullScreen}, true);
    ASSERT_TRUE(XClient::waitUntil([&] {
        return window->client() == PixelRect{0, 0, 1920, 1080};
    }));
    AXWindow target = adapter().window(window->id());
    EXPECT_EQ(movable(target), false);
    EXPECT_EQ(
        AttributeReader::boolean(adapter().platform, target.element(), AttributeName::fullScreen),
        true);
    EXPECT_FALSE(adapter().bridge.isSnappable(target.element()));
    desktop().observer().forget();
    const Element& element = target.element();
    EXPECT_FALSE(adapter().platform.write(element, AttributeName::position, Point{10, 10}));
    EXPECT_FALSE(adapter().platform.write(element, AttributeName::size, Size{500, 500}));
    EXPECT_THAT(desktop().observer().messages(), SizeIs(0));
    EXPECT_EQ(window->client(), (PixelRect{0, 0, 1920, 1080}));

    window->setState({fullScreen}, false);
    ASSERT_TRUE(XClient::waitUntil([&] { return window->frame().width == 700; }));
    adapter().connection->synchronize();
    target.setFrame({0, 0, 960, 1080});
    EXPECT_EQ(window->frame(), (PixelRect{0, 0, 960, 1080}));
}

TEST_P(X11WindowState, minimizedWindowIsPlacedAllTheSame) {
    start();
    const auto window = open(Kind::decorated);
    window->place({300, 200, 700, 500});
    AXWindow target = adapter().window(window->id());
    constexpr std::uint32_t iconic = 3;
    window->ask(window->id(), "WM_CHANGE_STATE", {iconic});
    // openbox moves the frame about while it animates this, and takes it away at the end.
    ASSERT_TRUE(XClient::waitUntil([&] { return window->hasState(hidden) && !isSeen(*window); }));
    adapter().connection->synchronize();
    EXPECT_EQ(
        AttributeReader::boolean(adapter().platform, target.element(), AttributeName::minimized),
        true);
    EXPECT_FALSE(adapter().bridge.isSnappable(target.element()));
    EXPECT_TRUE(target.isWindow());
    const double seconds = vainSecondsFor([&] { target.setFrame({100, 120, 640, 480}); });
    EXPECT_EQ(target.frame(), (Rect{100, 120, 640, 480}));
    EXPECT_LT(seconds, patient);
    window->activate();
    EXPECT_TRUE(XClient::waitUntil([&] {
        return window->frame() == PixelRect{100, 120, 640, 480};
    }));
    adapter().connection->synchronize();
    EXPECT_EQ(
        AttributeReader::boolean(adapter().platform, target.element(), AttributeName::minimized),
        false);
}

TEST_P(X11WindowState, windowOnAnotherDesktopIsNotMinimized) {
    start();
    desktop().observer().ask(desktop().observer().root(), "_NET_NUMBER_OF_DESKTOPS", {2});
    ASSERT_TRUE(XClient::waitUntil([&] {
        return desktop().observer().cardinal(desktop().observer().root(),
                                             "_NET_NUMBER_OF_DESKTOPS") >= 2;
    }));
    const auto window = open(Kind::decorated);
    const auto other = open(Kind::decorated);
    AXWindow target = adapter().window(window->id());
    window->ask(window->id(), "_NET_WM_DESKTOP", {1, 2});
    ASSERT_TRUE(XClient::waitUntil([&] {
        return window->cardinal(window->id(), "_NET_WM_DESKTOP") == 1 && !isSeen(*window);
    }));
    adapter().connection->synchronize();
    EXPECT_EQ(
        AttributeReader::boolean(adapter().platform, target.element(), AttributeName::minimized),
        false);
    // xfwm4 says no more that the window may be moved, and moves it.
    EXPECT_TRUE(adapter().bridge.isSnappable(target.element()));
    EXPECT_EQ(adapter().platform.isSettable(target.element(), AttributeName::size), true);
    target.setFrame({100, 120, 640, 480});
    EXPECT_EQ(target.frame(), (Rect{100, 120, 640, 480}));
    EXPECT_EQ(window->frame(), (PixelRect{100, 120, 640, 480}));
}

INSTANTIATE_TEST_SUITE_P(Every, X11WindowState, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
