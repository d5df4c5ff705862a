// A snapped window goes from where it was to where it will be, and is nowhere else on the way.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/desktop/support/OuterFrame.h"
#include "tests/desktop/support/OuterRectangles.h"
#include "tests/desktop/support/SnapDesktop.h"
#include "tests/desktop/support/WindowActivation.h"
#include "tests/desktop/support/WindowPlacing.h"

namespace lumatile::desktop {
namespace {

constexpr PixelRect usual{210, 160, 700, 450};

class OneChange : public OnEveryWindowManager {
protected:
    void SetUp() override {
        SnapDesktop::Setup setup;
        setup.windowManager = GetParam();
        desktop_ = std::make_unique<SnapDesktop>(setup);
    }

    void TearDown() override { EXPECT_EQ(desktop_->endProgram(), ""); }

    SnapDesktop& desktop() { return *desktop_; }

    using Command = std::function<void(std::string_view)>;

    void press(std::string_view command) { desktop().press(command); }

    /// The same by the program that asks for things over the bus, as the menu's items do it inside.
    void ask(std::string_view command) {
        const std::vector<std::string> words{LUMATILECTL_PROGRAM, "run",
                                             "command." + std::string(command)};
        // The program can be asked a moment after its shortcuts work.
        ASSERT_TRUE(XClient::waitUntil([&] {
            ChildProcess asking = desktop().desktop().session().start(words, "asking");
            const auto exit = asking.wait(Deadline::usual());
            return exit && exit->status == 0;
        }));
    }

    /// @param window the frontmost one
    void expectOneChangeEach(xcb_window_t window, const Command& run) {
        OuterRectangles seen(desktop().desktop().display(), window);
        for (const std::string_view command :
             // metacity makes a window without a frame full-screen that covers the screen.
             {"left", "bottomRight", "centerThird", "center", "restore", "maximize"}) {
            SCOPED_TRACE(command);
            DesktopObserver& observer = desktop().observer();
            const bool startsAtUsual = command == "center" || command == "restore";
            if (startsAtUsual) {
                placeWindow(observer, window, usual);
            }
            const PixelRect wanted = command == "center" ? desktop().expected().centered(usual, 0)
                                     : command == "restore"
                                         ? usual
                                         : desktop().expected().area(defaultShortcut(command), 0);
            if (command == "restore") {
                run("left");
                ASSERT_TRUE(settles(window, desktop().expected().area(defaultShortcut("left"), 0)));
            }
            seen.forget();
            observer.forget();
            ASSERT_NO_FATAL_FAILURE(run(command));
            ASSERT_TRUE(settles(window, wanted));
            EXPECT_EQ(seen.outer().size(), 2U) << toString(seen.outer());
            EXPECT_LE(seen.clientSizes().size(), 2U) << toString(seen.clientSizes());
            EXPECT_EQ(observer.messages(window, "_NET_MOVERESIZE_WINDOW").size(), 1U);
        }
    }

private:
    /// Whether the window is at `wanted` when everything is done.
    testing::AssertionResult settles(xcb_window_t window, const PixelRect& wanted) {
        DesktopObserver& observer = desktop().observer();
        const auto now = [&] { return outerFrame(observer, window).value_or(PixelRect{}); };
        const bool arrived = XClient::waitUntil([&] { return now() == wanted; });
        const bool answered = desktop().settle();
        activateWindow(observer, window);
        if (arrived && answered && now() == wanted) {
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure()
               << "the window is at " << now() << " instead of " << wanted;
    }

    std::unique_ptr<SnapDesktop> desktop_;
};

TEST_P(OneChange, ofEveryKindOfWindowByKey) {
    for (const TestWindow::Kind kind : {TestWindow::Kind::decorated, TestWindow::Kind::undecorated,
                                        TestWindow::Kind::clientSide}) {
        SCOPED_TRACE(static_cast<int>(kind));
        TestWindow::Options options;
        options.kind = kind;
        const auto window = desktop().desktop().openWindow(options);
        window->place(usual);
        expectOneChangeEach(window->id(), [this](std::string_view command) { press(command); });
    }
}

TEST_P(OneChange, ofAToolkitsWindowThatDrawsItsOwnFrame) {
    const auto program =
        desktop().desktop().openProgram({LUMATILE_CLIENT_SIDE_WINDOW}, "ClientSideWindow");
    placeWindow(desktop().observer(), program.window, usual);
    expectOneChangeEach(program.window, [this](std::string_view command) { press(command); });
}

TEST_P(OneChange, byAnotherProgramsWish) {
    const auto window = desktop().desktop().openWindow({});
    window->place(usual);
    expectOneChangeEach(window->id(), [this](std::string_view command) { ask(command); });
}

INSTANTIATE_TEST_SUITE_P(Desktop, OneChange, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
