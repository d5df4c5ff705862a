// What a snap costs on an X server: the messages to the window manager, beside the reports that the
// client window gets of its geometry.

#include <gtest/gtest.h>

#include <chrono>

#include "tests/desktop/support/SnapDesktop.h"

namespace lumatile::desktop {
namespace {

// The program waits for an answer of the window manager, but a quarter of a second at most, and
// goes on without. A snap that was quicker than that has had all its answers.
constexpr std::chrono::milliseconds ordinaryTime{200};

class Writes : public OnEveryWindowManager {
protected:
    /// Snaps the window and expects few writes and few changes.
    /// @return false when it took so long that the window manager may have been waited for in vain,
    ///         which is no ordinary snap; then nothing is expected of what was asked
    static bool snapsInFewWrites(SnapDesktop& desktop, TestWindow& window,
                                 std::string_view command) {
        bool isOrdinary = false;
        expectFewWrites(desktop, window, command, isOrdinary);
        return isOrdinary;
    }

private:
    static void expectFewWrites(SnapDesktop& desktop, TestWindow& window, std::string_view command,
                                bool& isOrdinary) {
        using Clock = std::chrono::steady_clock;
        ASSERT_TRUE(desktop.settle(window));
        const PixelRect before = window.frame();
        window.forgetConfigurations();
        desktop.observer().forget();
        const Clock::time_point pressed = Clock::now();
        desktop.press(command);
        const PixelRect target = command == "center"
                                     ? desktop.expected().centered(before, 0)
                                     : desktop.expected().area(defaultShortcut(command), 0);
        ASSERT_TRUE(reaches(window, target)) << command;
        isOrdinary = Clock::now() - pressed < ordinaryTime;
        ASSERT_TRUE(desktop.settle(window));
        if (!isOrdinary) {
            return;
        }
        const auto messages = desktop.observer().messages(window.id(), "_NET_MOVERESIZE_WINDOW");
        for (const RootMessage& message : messages) {
            EXPECT_EQ(message.data[0] & 0xffU, 1U) << "north-west gravity: " << message;
        }
        const std::size_t asked = messages.size();
        // The window manager reports a change from its frame's side and from the client's.
        const std::size_t reported = window.configurations().size();
        RecordProperty(std::string(command) + "_asked", static_cast<int>(asked));
        RecordProperty(std::string(command) + "_reported", static_cast<int>(reported));
        EXPECT_EQ(asked, 1U) << command;
        EXPECT_GE(reported, 1U) << command;
        EXPECT_LE(reported, 3U) << command;
        EXPECT_TRUE(desktop.observer().messages(window.id(), "_NET_WM_STATE").empty()) << command;
    }
};

TEST_P(Writes, anOrdinarySnapAsksOnceAndIsReportedAFewTimes) {
    SnapDesktop::Setup setup;
    setup.windowManager = GetParam();
    SnapDesktop desktop(setup);
    const auto window = desktop.desktop().openWindow({});
    window->place({200, 150, 600, 400});
    const PixelRect usual{200, 150, 600, 400};
    for (const std::string_view command : {"left", "rightThird", "topLeft", "maximize", "center"}) {
        if (command == "center") {
            window->place(usual);
        }
        const Deadline deadline = Deadline::usual();
        while (!snapsInFewWrites(desktop, *window, command)) {
            if (HasFatalFailure()) {
                return;
            }
            ASSERT_FALSE(deadline.isOver()) << "the machine is never quick enough: " << command;
            window->place(usual);
        }
    }
    EXPECT_EQ(desktop.endProgram(), "");
}

INSTANTIATE_TEST_SUITE_P(Desktop, Writes, testing::ValuesIn(WindowManager::kinds), nameOf);

}  // namespace
}  // namespace lumatile::desktop
