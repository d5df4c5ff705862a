#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tests/desktop/support/AskedFrame.h"
#include "tests/desktop/support/DefaultShortcuts.h"
#include "tests/desktop/support/ExpectedFrame.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/TestDesktop.h"

namespace lumatile::desktop {

/// A private desktop with the program running on it.
class SnapDesktop {
public:
    struct Setup {
        WindowManager::Kind windowManager = WindowManager::Kind::openbox;
        MonitorLayout layout = MonitorLayout::landscape();
        WindowManager::Options options{};
        /// Monitor that has a panel along its lower edge.
        std::optional<std::size_t> panel = std::nullopt;
        LumatileProcess::Settings settings{};
    };

    static constexpr int panelHeight = 37;  ///< Odd, so that halves do not come out even.

    explicit SnapDesktop(const Setup& setup);

    TestDesktop& desktop() { return desktop_; }
    DesktopObserver& observer() { return desktop_.observer(); }
    InputDriver& input() { return desktop_.input(); }
    LumatileProcess& program() { return *program_; }
    TestWindow& panel() { return *panel_; }
    const ExpectedFrame& expected() const { return expected_; }

    /// Presses the default shortcut of the command.
    void press(const DefaultShortcut& shortcut);
    void press(std::string_view command) { press(defaultShortcut(command)); }

    /// Returns when the program has dealt with every shortcut that was pressed before. A window is
    /// where it should be a little before that, and to be touched only then: the snap's last write
    /// would undo what a test does to the window. Mouse events that came before have been dealt
    /// with, too. It snaps a window of our own.
    /// @return false when it does not answer
    bool settle();
    /// The same, and gives the focus back to `window`.
    bool settle(TestWindow& window);

    /// Ends the program.
    /// @return what is wrong with how it ended; empty when nothing is
    std::string endProgram();

private:
    TestDesktop desktop_;
    ExpectedFrame expected_;
    std::optional<std::size_t> panelMonitor_;
    std::unique_ptr<TestWindow> panel_;
    std::unique_ptr<LumatileProcess> program_;
};

/// Whether the window gets to `wanted` in time; a failure says where it is instead.
testing::AssertionResult reaches(TestWindow& window, const PixelRect& wanted);

/// A window manager as the parameter of a test suite; its name is part of the test's.
class OnEveryWindowManager : public testing::TestWithParam<WindowManager::Kind> {};

std::string nameOf(const testing::TestParamInfo<WindowManager::Kind>& kind);

}  // namespace lumatile::desktop
