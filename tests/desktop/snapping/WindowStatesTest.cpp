// Windows that are not simply standing there when a shortcut is pressed.

#include <gtest/gtest.h>
#include <signal.h>

#include <algorithm>
#include <memory>

#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

using Kind = TestWindow::Kind;

const std::string vertically = "_NET_WM_STATE_MAXIMIZED_VERT";
const std::string horizontally = "_NET_WM_STATE_MAXIMIZED_HORZ";
const std::vector<std::string> maximized{vertically, horizontally};
const std::string shaded = "_NET_WM_STATE_SHADED";
const std::string fullScreen = "_NET_WM_STATE_FULLSCREEN";

class WindowStates : public OnEveryWindowManager {
protected:
    void SetUp() override {
        SnapDesktop::Setup setup;
        setup.windowManager = GetParam();
        desktop_ = std::make_unique<SnapDesktop>(setup);
    }

    void TearDown() override { EXPECT_EQ(desktop_->endProgram(), ""); }

    std::unique_ptr<TestWindow> open(Kind kind) {
        TestWindow::Options options;
        options.kind = kind;
        auto window = desktop_->desktop().openWindow(options);
        window->place({200, 180, 600, 450});
        return window;
    }

    PixelRect target(std::string_view command) {
        return desktop_->expected().area(defaultShortcut(command), 0);
    }

    // The state is left first, and the place is exact although the frame changes on the way.
    void expectSnapOutOf(const std::vector<std::string>& states) {
        for (const Kind kind : {Kind::decorated, Kind::undecorated, Kind::clientSide}) {
            for (const std::string_view command : {"leftThird", "bottomRight", "maximize"}) {
                SCOPED_TRACE(std::string(command) + " of kind " +
                             std::to_string(static_cast<int>(kind)));
                const auto window = open(kind);
                window->setState(states, true);
                desktop_->press(command);
                // Maximized on both axes it fills the target already, and stays.
                const bool isThere = command == "maximize" && states == maximized;
                ASSERT_TRUE(XClient::waitUntil([&] {
                    return window->frame() == target(command) &&
                           (isThere ||
                            std::none_of(states.begin(), states.end(), [&](const auto& state) {
                                return window->hasState(state);
                            }));
                })) << "the window became "
                    << window->frame() << " instead of " << target(command);
                ASSERT_TRUE(desktop_->settle(*window));
                EXPECT_EQ(window->frame(), target(command));
            }
        }
    }

    std::unique_ptr<SnapDesktop> desktop_;
};

TEST_P(WindowStates, aMaximizedWindowSnaps) { expectSnapOutOf(maximized); }

TEST_P(WindowStates, aWindowMaximizedOnOneAxisSnaps) {
    expectSnapOutOf({vertically});
    expectSnapOutOf({horizontally});
}

TEST_P(WindowStates, aShadedWindowSnaps) {
    const auto window = open(Kind::decorated);
    window->setState({shaded}, true);
    desktop_->press("leftThird");
    ASSERT_TRUE(reaches(*window, target("leftThird")));
    EXPECT_TRUE(XClient::waitUntil([&] { return !window->hasState(shaded); }));
}

TEST_P(WindowStates, aFullScreenWindowIsNeverMoved) {
    const auto window = open(Kind::decorated);
    window->setState({fullScreen}, true);
    const PixelRect screen{0, 0, 1920, 1080};
    ASSERT_TRUE(XClient::waitUntil([&] { return window->client() == screen; }));
    desktop_->observer().forget();
    desktop_->press("leftThird");
    desktop_->press("nextDisplay");
    ASSERT_TRUE(desktop_->settle(*window));
    EXPECT_TRUE(window->hasState(fullScreen));
    EXPECT_TRUE(XClient::waitUntil([&] { return window->client() == screen; }));
    EXPECT_EQ(desktop_->observer().messages(window->id(), "_NET_MOVERESIZE_WINDOW").size(), 0U);
    EXPECT_EQ(desktop_->observer().messages(window->id(), "_NET_WM_STATE").size(), 0U);
}

TEST_P(WindowStates, aStoppedProgramsWindowSnapsAndDelaysNoOther) {
    auto terminal = desktop_->desktop().openProgram({"xterm", "-e", "exec sleep 1000"}, "XTerm");
    const auto frame = [&] {
        return outerFrame(desktop_->observer(), terminal.window).value_or(PixelRect{});
    };
    terminal.process.signal(SIGSTOP);
    desktop_->press("topRight");
    EXPECT_TRUE(XClient::waitUntil([&] {
        return frame().x == target("topRight").x && frame().y == target("topRight").y;
    })) << frame();
    const auto window = open(Kind::decorated);
    desktop_->press("left");
    EXPECT_TRUE(reaches(*window, target("left")));
    terminal.process.signal(SIGCONT);
}

INSTANTIATE_TEST_SUITE_P(Desktop, WindowStates, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
