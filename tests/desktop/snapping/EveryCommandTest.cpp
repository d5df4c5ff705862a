// Every command by its real shortcut, on every window manager, for every kind of window, on every
// arrangement of screens: what was asked of the window manager, and what the window became.

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <tuple>

#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

using Kind = TestWindow::Kind;

struct Arrangement {
    std::string name;
    MonitorLayout layout;
    std::size_t monitor = 0;  ///< Where the window is.
    std::optional<std::size_t> panel = std::nullopt;
};

const std::vector<Arrangement>& arrangements() {
    static const std::vector<Arrangement> all{
        {"landscape", MonitorLayout::landscape(), 0},
        {"smallLandscape", MonitorLayout::smallLandscape(), 0},
        {"portrait", MonitorLayout::portrait(), 0},
        {"landscapeBesidePortrait", MonitorLayout::landscapeAndPortrait(), 0, 0},
        {"portraitBesideLandscape", MonitorLayout::landscapeAndPortrait(), 1, 0},
        {"primaryAwayFromTheOrigin", MonitorLayout::portraitAndPrimaryLandscape(), 1, 1},
        {"leftOfThePrimary", MonitorLayout::portraitAndPrimaryLandscape(), 0, 1},
    };
    return all;
}

const std::map<Kind, std::string> kindNames{{Kind::decorated, "decorated"},
                                            {Kind::undecorated, "undecorated"},
                                            {Kind::clientSide, "clientSide"},
                                            {Kind::sizeIncrement, "sizeIncrement"}};

using Parameter = std::tuple<WindowManager::Kind, std::size_t, Kind>;

// A desktop serves all kinds of windows in turn; the next arrangement gets a new one.
class EveryCommand : public testing::TestWithParam<Parameter> {
protected:
    static void TearDownTestSuite() { drop(); }

    void SetUp() override {
        const auto [windowManager, index, kind] = GetParam();
        if (!shared || sharedFor != std::pair(windowManager, index)) {
            drop();
            SnapDesktop::Setup setup;
            setup.windowManager = windowManager;
            setup.layout = arrangement().layout;
            setup.panel = arrangement().panel;
            shared = std::make_unique<SnapDesktop>(setup);
            sharedFor = {windowManager, index};
        }
        TestWindow::Options options;
        options.kind = kind;
        const PixelRect screen = desktop().expected().visible(monitor());
        options.area = {screen.x + 200, screen.y + 150, 640, 400};
        window_ = desktop().desktop().openWindow(options);
        window_->place(free());
    }

    void TearDown() override {
        window_.reset();
        if (HasFailure()) {
            drop();  // The next case shall not suffer from this one.
        }
    }

    static void drop() {
        if (shared) {
            EXPECT_EQ(shared->endProgram(), "");
            shared.reset();
        }
    }

    SnapDesktop& desktop() { return *shared; }
    const Arrangement& arrangement() { return arrangements()[std::get<1>(GetParam())]; }
    std::size_t monitor() { return arrangement().monitor; }
    bool hasSteps() { return std::get<2>(GetParam()) == Kind::sizeIncrement; }

    // Somewhere in the middle of the screen; a size that a stepping window can have exactly.
    PixelRect free() {
        const PixelRect screen = desktop().expected().visible(monitor());
        return {screen.x + 101, screen.y + 203, 600, 450};
    }

    bool isAt(const PixelRect& wanted, const PixelRect& frame) {
        return hasSteps() ? TestWindow::isStepped(frame, wanted) : frame == wanted;
    }

    // With locks on and off in turn: they must not make a difference.
    void pressWithLocks(const DefaultShortcut& shortcut) {
        ++presses_;
        ASSERT_TRUE(desktop().input().setLock(KeyPosition::capsLock, presses_ % 2 != 0));
        ASSERT_TRUE(desktop().input().setLock(KeyPosition::numLock, presses_ % 4 >= 2));
        desktop().press(shortcut);
    }

    void expectSnap(const DefaultShortcut& shortcut, const PixelRect& wanted) {
        SCOPED_TRACE(std::string(shortcut.command));
        const PixelRect before = window_->frame();
        ASSERT_FALSE(isAt(wanted, before)) << "nothing to see: it is at " << before;
        desktop().observer().forget();
        pressWithLocks(shortcut);
        ASSERT_TRUE(XClient::waitUntil([&] { return isAt(wanted, window_->frame()); }))
            << "the window became " << window_->frame() << " instead of " << wanted;
        const std::optional<PixelRect> asked =
            askedFrame(desktop().observer(), window_->id(), before);
        ASSERT_TRUE(asked.has_value());
        EXPECT_TRUE(isAt(wanted, *asked)) << "asked for " << *asked << " instead of " << wanted;
        for (const RootMessage& message :
             desktop().observer().messages(window_->id(), "_NET_MOVERESIZE_WINDOW")) {
            EXPECT_EQ(message.data[0] & 0xffU, 1U) << "north-west gravity: " << message;
        }
    }

    std::unique_ptr<TestWindow> window_;

private:
    static inline std::unique_ptr<SnapDesktop> shared;
    static inline std::pair<WindowManager::Kind, std::size_t> sharedFor;

    int presses_ = 0;
};

TEST_P(EveryCommand, asksForItsTargetAndGetsIt) {
    for (const DefaultShortcut& shortcut : defaultShortcuts()) {
        if (shortcut.kind == DefaultShortcut::Kind::area) {
            expectSnap(shortcut, desktop().expected().area(shortcut, monitor()));
            if (HasFatalFailure()) {
                return;
            }
        }
    }
    // Nothing comes after the last target either.
    const PixelRect last = window_->frame();
    ASSERT_TRUE(desktop().settle(*window_));
    EXPECT_EQ(window_->frame(), last);
}

TEST_P(EveryCommand, centersWithoutResizing) {
    const PixelRect before = window_->frame();
    const PixelRect wanted = desktop().expected().centered(before, monitor());
    desktop().observer().forget();
    pressWithLocks(defaultShortcut("center"));
    EXPECT_TRUE(reaches(*window_, wanted));
    EXPECT_EQ(askedFrame(desktop().observer(), window_->id(), before), wanted);
    ASSERT_TRUE(desktop().settle(*window_));
    EXPECT_EQ(window_->frame(), wanted);
}

TEST_P(EveryCommand, restoresTheFrameBeforeTheLastCommandAndBack) {
    const PixelRect before = window_->frame();
    expectSnap(defaultShortcut("topLeft"),
               desktop().expected().area(defaultShortcut("topLeft"), monitor()));
    expectSnap(defaultShortcut("rightThird"),
               desktop().expected().area(defaultShortcut("rightThird"), monitor()));
    const PixelRect snapped = window_->frame();
    const PixelRect earlier = [&] {
        pressWithLocks(defaultShortcut("restore"));
        EXPECT_TRUE(XClient::waitUntil([&] {
            return isAt(desktop().expected().area(defaultShortcut("topLeft"), monitor()),
                        window_->frame());
        })) << window_->frame();
        return window_->frame();
    }();
    EXPECT_NE(earlier, before);
    pressWithLocks(defaultShortcut("restore"));
    EXPECT_TRUE(reaches(*window_, snapped));
    pressWithLocks(defaultShortcut("restore"));
    EXPECT_TRUE(reaches(*window_, earlier));
}

TEST_P(EveryCommand, restoreLeavesAWindowThatWasNeverSnapped) {
    const PixelRect before = window_->frame();
    desktop().observer().forget();
    pressWithLocks(defaultShortcut("restore"));
    ASSERT_TRUE(desktop().settle(*window_));
    EXPECT_EQ(window_->frame(), before);
    EXPECT_EQ(desktop().observer().messages(window_->id(), "_NET_MOVERESIZE_WINDOW").size(), 0U);
}

TEST_P(EveryCommand, movesToTheNeighbouringDisplayAndBack) {
    const PixelRect before = window_->frame();
    const bool alone = arrangement().layout.monitors.size() < 2;
    const std::size_t other = alone ? monitor() : 1 - monitor();
    const PixelRect there = alone ? before : desktop().expected().moved(before, monitor(), other);
    desktop().observer().forget();
    pressWithLocks(defaultShortcut("nextDisplay"));
    ASSERT_TRUE(XClient::waitUntil([&] { return isAt(there, window_->frame()); }))
        << "the window became " << window_->frame() << " instead of " << there;
    ASSERT_TRUE(desktop().settle(*window_));
    EXPECT_TRUE(isAt(there, window_->frame())) << window_->frame();
    if (alone) {
        EXPECT_EQ(desktop().observer().messages(window_->id(), "_NET_MOVERESIZE_WINDOW").size(),
                  0U);
    }
    pressWithLocks(defaultShortcut("previousDisplay"));
    ASSERT_TRUE(XClient::waitUntil([&] {
        const PixelRect frame = window_->frame();
        return hasSteps() ? frame.x == before.x && frame.y == before.y : frame == before;
    })) << "the window became "
        << window_->frame() << " instead of " << before;
}

std::vector<std::size_t> arrangementIndices() {
    std::vector<std::size_t> indices(arrangements().size());
    for (std::size_t index = 0; index < indices.size(); ++index) {
        indices[index] = index;
    }
    return indices;
}

INSTANTIATE_TEST_SUITE_P(Desktop, EveryCommand,
                         testing::Combine(testing::ValuesIn(WindowManager::kinds),
                                          testing::ValuesIn(arrangementIndices()),
                                          testing::Values(Kind::decorated, Kind::undecorated,
                                                          Kind::clientSide, Kind::sizeIncrement)),
                         [](const testing::TestParamInfo<Parameter>& each) {
                             return toString(std::get<0>(each.param)) + "_" +
                                    arrangements()[std::get<1>(each.param)].name + "_" +
                                    kindNames.at(std::get<2>(each.param));
                         });

}  // namespace
}  // namespace lumatile::desktop
