// The private KWin Wayland session: whether what the desktop tests rely on is so.

#include "tests/desktop/support/kwin/KWinDesktop.h"

#include <gtest/gtest.h>

#include "tests/desktop/support/KeyPosition.h"
#include "tests/desktop/support/kwin/ScreenPicture.h"
#include "tests/desktop/support/kwin/SessionWait.h"
#include "tests/desktop/support/kwin/WaylandPanel.h"

namespace lumatile::desktop {
namespace {

namespace Key = KeyPosition;

const Rect usual{200, 150, 700, 450};

TEST(KWinDesktop, twoRunSideBySideWithoutNoticingEachOther) {
    KWinDesktop one;
    KWinDesktop other;
    const auto window = one.openWindow({});
    one.probe().sync();
    other.probe().sync();
    EXPECT_EQ(one.probe().windows().size(), 1U);
    EXPECT_EQ(other.probe().windows().size(), 0U);
    EXPECT_NE(one.server().display(), other.server().display());
}

TEST(KWinDesktop, tellsWhatAWindowIsAndWhatBecomesOfIt) {
    KWinDesktop desktop;
    for (const auto toolkit : {NativeWindow::Toolkit::qt, NativeWindow::Toolkit::gtk}) {
        SCOPED_TRACE(static_cast<int>(toolkit));
        NativeWindow::Options options;
        options.toolkit = toolkit;
        options.title = "a title";
        options.applicationId = "org.lumatile.test.Named";
        const auto window = desktop.openWindow(options);
        const auto becomes = [&](const std::function<bool(const WindowState&)>& so) {
            return waitInSession([&] { return so(window->state()); });
        };
        EXPECT_EQ(window->state().caption, "a title");
        EXPECT_TRUE(becomes(
            [](const auto& state) { return state.desktopFile == "org.lumatile.test.Named"; }));
        EXPECT_EQ(window->state().pid, window->process().pid());
        EXPECT_TRUE(window->state().active);
        window->place(usual);
        EXPECT_EQ(window->frame(), usual);
        desktop.probe().maximize(window->id(), true, true);
        EXPECT_TRUE(becomes([](const auto& state) {
            return state.maximizedHorizontally && state.maximizedVertically &&
                   state.frame == Rect{0, 0, 1920, 1080};
        })) << window->state();
        desktop.probe().maximize(window->id(), false, false);
        EXPECT_TRUE(becomes([](const auto& state) {
            return !state.maximizedHorizontally && state.frame == usual;
        })) << window->state();
        desktop.probe().fullScreen(window->id(), true);
        EXPECT_TRUE(becomes([](const auto& state) { return state.fullScreen; }));
        desktop.probe().fullScreen(window->id(), false);
        EXPECT_TRUE(becomes([](const auto& state) { return !state.fullScreen; }));
        desktop.probe().minimize(window->id(), true);
        EXPECT_TRUE(becomes([](const auto& state) { return state.minimized; }));
        desktop.probe().minimize(window->id(), false);
        EXPECT_TRUE(becomes([](const auto& state) { return !state.minimized; }));
        window->activate();
        desktop.probe().shortcut("slotWindowQuickTileLeft");
        EXPECT_TRUE(becomes([](const auto& state) {
            return state.tiled && state.frame == Rect{0, 0, 960, 1080};
        })) << window->state();
        desktop.probe().close(window->id());
        EXPECT_TRUE(waitInSession([&] { return !desktop.probe().window(window->id()); }));
    }
}

TEST(KWinDesktop, opensWindowsFullScreenAndWithAMinimumSizeAndDialogs) {
    KWinDesktop desktop;
    for (const auto toolkit : {NativeWindow::Toolkit::qt, NativeWindow::Toolkit::gtk}) {
        SCOPED_TRACE(static_cast<int>(toolkit));
        NativeWindow::Options options;
        options.toolkit = toolkit;
        options.fullScreen = true;
        const auto whole = desktop.openWindow(options);
        EXPECT_TRUE(waitInSession([&] {
            return whole->state().fullScreen && whole->frame() == Rect{0, 0, 1920, 1080};
        })) << whole->state();
        options.fullScreen = false;
        options.minimumWidth = 500;
        options.minimumHeight = 300;
        const auto small = desktop.openWindow(options);
        desktop.probe().place(small->id(), {10, 10, 200, 200});
        EXPECT_TRUE(waitInSession([&] {
            const Rect frame = small->frame();
            // What draws its own frame counts the shadow as its own.
            return frame.x == 10 && frame.width >= 440 && frame.width < 600 &&
                   frame.height >= 240 && frame.height < 400;
        })) << small->state();
        options.dialog = true;
        options.title = "a dialog";
        const auto dialog = desktop.openWindow(options);
        EXPECT_TRUE(desktop.probe().find(
            [](const auto& state) { return state.caption == "parent of a dialog"; }));
    }
}

TEST(KWinDesktop, hasAnXServerWhoseWindowsKWinManages) {
    KWinDesktop desktop;
    const auto window = desktop.openXWindow({});
    const auto seen = [&] {
        return desktop.probe().find(
            [](const auto& state) { return state.caption == "test window"; });
    };
    ASSERT_TRUE(waitInSession([&] { return seen() && seen()->active; }));
    desktop.probe().place(seen()->id, usual);
    EXPECT_TRUE(waitInSession([&] { return window->frame() == PixelRect{200, 150, 700, 450}; }));
    EXPECT_EQ(seen()->frame, usual);
}

TEST(KWinDesktop, keysAndPointerAreThoseOfAUser) {
    KWinDesktop desktop;
    const auto window = desktop.openWindow({});
    window->place(usual);
    // KWin's own command for this key.
    desktop.input().press(std::array{Key::leftSuper}, Key::left);
    // Before it has answered, its frame is still that of before, as it is to be afterwards.
    ASSERT_TRUE(waitInSession([&] {
        return window->state().tiled && window->frame() == Rect{0, 0, 960, 1080};
    })) << window->state();
    desktop.probe().shortcut("slotWindowQuickTileLeft");
    ASSERT_TRUE(waitInSession([&] { return !window->state().tiled; })) << window->state();
    window->place(usual);
    // By its title bar.
    desktop.input().movePointer(usual.x + 200, usual.y + 12);
    desktop.input().buttonDown();
    desktop.input().movePointer(usual.x + 220, usual.y + 32);
    desktop.input().movePointer(usual.x + 300, usual.y + 62);
    EXPECT_TRUE(waitInSession([&] {
        return window->state().moving && window->frame() == Rect{300, 200, 700, 450};
    })) << window->state();
    desktop.input().buttonUp();
    EXPECT_TRUE(waitInSession([&] { return !window->state().moving; }));
}

TEST(KWinDesktop, outputsStandUprightAreScaledAndComeAndGo) {
    KWinDesktop::Options options;
    options.outputs = {{.x = 0, .y = 0}, {.x = 1920, .y = 0, .upright = true}};
    KWinDesktop desktop(options);
    const auto areas = [&] {
        std::vector<Rect> result;
        for (const auto& screen : desktop.probe().screens()) {
            result.push_back(screen.whole);
        }
        return result;
    };
    const std::vector<Rect> both{{0, 0, 1920, 1080}, {1920, 0, 1080, 1920}};
    EXPECT_EQ(areas(), both);
    desktop.arrange({{.x = 0, .y = 0, .scale = 1.5}, {.x = 1280, .y = 0, .upright = true}});
    const std::vector<Rect> scaled{{0, 0, 1280, 720}, {1280, 0, 1080, 1920}};
    EXPECT_EQ(areas(), scaled);
    desktop.arrange({{.x = 0, .y = 0}, {.enabled = false}});
    const std::vector<Rect> alone{{0, 0, 1920, 1080}};
    EXPECT_EQ(areas(), alone);
    desktop.arrange(options.outputs);
    EXPECT_EQ(areas(), both);
    desktop.arrange({{.x = 0, .y = 0, .upright = true}, {.x = 1080, .y = 300}}, 1);
    EXPECT_EQ(areas().size(), 2U);
}

TEST(KWinDesktop, locksAreTurnedOnAndOff) {
    KWinDesktop desktop;
    for (const std::uint8_t lock : {Key::capsLock, Key::numLock}) {
        for (const bool on : {true, false, true, true, false}) {
            EXPECT_TRUE(desktop.input().setLock(lock, on)) << on;
        }
    }
    EXPECT_FALSE(desktop.input().setLock(Key::a, true));
}

TEST(KWinDesktop, aPanelTakesItsRoomOnItsOutputAlone) {
    KWinDesktop::Options options;
    options.outputs = {{.x = 0, .y = 0}, {.x = 1920, .y = 0, .upright = true}};
    KWinDesktop desktop(options);
    const auto areIn = [&](const Rect& first, const Rect& second) {
        return waitInSession([&] {
            const auto screens = desktop.probe().screens();
            return screens.at(0).usable == first && screens.at(1).usable == second;
        });
    };
    const Rect landscape{0, 0, 1920, 1080};
    const Rect portrait{1920, 0, 1080, 1920};
    EXPECT_TRUE(areIn(landscape, portrait));
    {
        const WaylandPanel panel(desktop.server().socket(), "Virtual-1", 1080, 37);
        EXPECT_TRUE(areIn(landscape, {1920, 0, 1080, 1920 - 37}));
    }
    EXPECT_TRUE(areIn(landscape, portrait));
}

TEST(KWinDesktop, startsAnewAfterACrash) {
    KWinDesktop desktop;
    desktop.server().crash();
    EXPECT_FALSE(desktop.server().isRunning());
    desktop.restart();
    const auto window = desktop.openWindow({});
    window->place(usual);
    EXPECT_EQ(window->frame(), usual);
}

TEST(KWinDesktop, picturesShowWhatStandsOnTheScreens) {
    KWinDesktop::Options options;
    options.pictures = true;
    KWinDesktop desktop(options);
    NativeWindow::Options red;
    red.color = 0xc01020;
    const auto window = desktop.openWindow(red);
    window->place(usual);
    ScreenColor shown;
    EXPECT_TRUE(waitInSession([&] {
        shown = ScreenPicture::colorAt(desktop.session(), 400, 400);
        return shown == ScreenColor::of(red.color);
    })) << shown;
    const ScreenPicture whole(desktop.session(), 0, 0, 1920, 1080);
    EXPECT_EQ(whole.width(), 1920);
    EXPECT_EQ(whole.height(), 1080);
    EXPECT_EQ(whole.at(400, 400), ScreenColor::of(red.color));
    EXPECT_NE(whole.at(1500, 900), ScreenColor::of(red.color));
}

}  // namespace
}  // namespace lumatile::desktop
