#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/Rect.h"
#include "tests/desktop/support/DefaultShortcuts.h"
#include "tests/desktop/support/LumatileProcess.h"
#include "tests/desktop/support/kwin/KWinDesktop.h"
#include "tests/desktop/support/kwin/SessionWait.h"

namespace lumatile::desktop {

/// A private KWin Wayland session with the program running in it.
class PlasmaDesk {
public:
    PlasmaDesk();

    /// Without the program, which `startProgram` starts.
    explicit PlasmaDesk(std::nullptr_t) {}
    explicit PlasmaDesk(const KWinDesktop::Options& options,
                        const LumatileProcess::Settings& settings = {});

    KWinDesktop& desktop() { return desktop_; }
    KWinProbe& probe() { return desktop_.probe(); }
    FakeInput& input() { return desktop_.input(); }
    LumatileProcess& program() { return *program_; }

    /// Presses the default shortcut of the command.
    void press(std::string_view command);

    /// Whether KWin's own snapping at the edges is on, as KWin itself says: "tiling maximize".
    std::string edges();

    /// From now on KWin keeps windows from pushing themselves in front as far as it does by itself.
    void keepWindowsFromPushing();

    /// Runs a program of this session to its end.
    /// @return what it wrote; its status comes before that where it is not 0
    std::string run(const std::vector<std::string>& command);

    /// Asks the program for something, as lumatilectl does, and waits for the answer.
    std::string ask(const std::vector<std::string>& words);

    /// Gives KWin other keyboard layouts: names and variants, with commas, as xkb calls them.
    void setLayouts(const std::string& names, const std::string& variants);

    /// Chooses one of several, from 0.
    void chooseLayout(unsigned index);

    /// Ends the program.
    /// @return what is wrong with how it ended; empty when nothing is
    std::string endProgram();

    /// Ends it as a crash does.
    void killProgram();

    void startProgram(const LumatileProcess::Settings& settings = {});

private:
    KWinDesktop desktop_;
    std::unique_ptr<LumatileProcess> program_;
    int questions_ = 0;
};

/// Whether the window gets to `wanted` in time; a failure says where it is instead.
testing::AssertionResult reaches(const NativeWindow& window, const Rect& wanted);

}  // namespace lumatile::desktop
