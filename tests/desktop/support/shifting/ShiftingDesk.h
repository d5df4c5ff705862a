#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/desktop/support/ShiftingApplication.h"
#include "tests/desktop/support/shifting/ShiftedWindow.h"

namespace lumatile::desktop {

/// A window that stays where it is, by what it is or by its state.
enum class StillWindow {
    maximized,
    maximizedVertically,
    maximizedHorizontally,
    fullScreen,
    minimized,
    shaded,  ///< Rolled up to its title bar.
    panel,   ///< Along the lower edge of the screen.
    icons,   ///< The background of the desktop.
    dialog,
    unmanaged,  ///< A menu or a tip, which shows itself past the window manager.
};

/// A private desktop with the application on its real adapters, in virtual time, as tables of cases
/// know it. It has one monitor of 1920 × 1080.
class ShiftingDesk : public ShiftingPace {
public:
    struct Setup {
        std::string_view oledSettings = shiftOnly;
        bool isComposited = false;  ///< Where the desktop can do without.
        /// Whether a window is waited for no longer than a user has to wait. Otherwise, where the
        /// adapter can, for so long that what becomes of a step is the same on a busy machine.
        bool isImpatient = false;
    };

    ShiftingDesk() = default;
    ShiftingDesk(const ShiftingDesk&) = delete;
    ShiftingDesk& operator=(const ShiftingDesk&) = delete;
    virtual ~ShiftingDesk() = default;

    virtual ApplicationConductor& conductor() = 0;
    virtual SimulatedInput& input() = 0;
    virtual SimulatedClock& clock() = 0;

    /// Lets virtual time pass; the steps that fall due are taken.
    virtual void advance(double seconds) = 0;

    /// Lets `count` intervals pass, which is as many steps.
    void step(int count = 1) { advance(interval * count); }

    /// Runs a built-in command on the active window.
    virtual void run(std::string_view nameKey) = 0;

    /// The kinds of ordinary windows; the first is framed by the desktop, the last draws its own
    /// frame.
    virtual const std::vector<std::string>& windowKinds() const = 0;

    /// A new window of some other program than this, active and placed.
    /// @param kind one of `windowKinds`
    virtual std::unique_ptr<ShiftedWindow> open(const std::string& kind,
                                                const PixelRect& frame) = 0;
    std::unique_ptr<ShiftedWindow> open(const PixelRect& frame) {
        return open(windowKinds().front(), frame);
    }

    /// A window of another program, of another toolkit than the first of `windowKinds`, active and
    /// placed; its application id is `otherId`.
    virtual std::unique_ptr<ShiftedWindow> openOther(const PixelRect& frame) = 0;
    static constexpr const char* otherId = "xlogo";

    /// A window whose size changes in columns of `terminalColumn` pixels, active, its frame at the
    /// place.
    virtual std::unique_ptr<ShiftedWindow> openTerminal(int x, int y) = 0;
    static constexpr int terminalColumn = 6;

    /// Whether the desktop makes windows heed their own steps of size.
    virtual bool heedsSteps() const = 0;

    /// @param frame of the window before it gets into the state, where it has a choice
    /// @return null where the desktop knows no such windows
    virtual std::unique_ptr<ShiftedWindow> openStill(StillWindow kind, const PixelRect& frame) = 0;

    /// What a user would notice of the desktop as a whole: stacking, focus, virtual desktop.
    virtual std::string condition() = 0;

    /// Forgets what the application asked for so far.
    virtual void forget() = 0;

    /// Makes the desktop have two virtual desktops.
    virtual void addVirtualDesktop() = 0;

    /// Stops the window manager, as one that hangs, and lets it go on. Frames are meanwhile those
    /// of before.
    virtual void hold() = 0;
    virtual void letGo() = 0;

    /// Waits until `condition` holds.
    virtual bool waitUntil(const std::function<bool()>& condition) = 0;

    /// Returns when the desktop has dealt with everything so far, also with what it puts off.
    virtual void settle() = 0;
};

/// A session on which tables of cases about shifts run.
struct ShiftingKind {
    std::string name;  ///< Part of the tests' names: "openbox", "plasma" …
    std::function<std::unique_ptr<ShiftingDesk>(const ShiftingDesk::Setup&)> start;
};

/// All of them: every window manager on an X server, then the Wayland sessions.
const std::vector<ShiftingKind>& shiftingKinds();

/// For messages of the test library.
std::ostream& operator<<(std::ostream& stream, const ShiftingKind& kind);

/// A session as the parameter of a test suite; its name is part of the test's.
class ShiftingTest : public testing::TestWithParam<ShiftingKind> {
public:
    static std::string nameOf(const testing::TestParamInfo<ShiftingKind>& kind) {
        return kind.param.name;
    }

protected:
    static std::unique_ptr<ShiftingDesk> start(const ShiftingDesk::Setup& setup = {}) {
        return GetParam().start(setup);
    }
};

}  // namespace lumatile::desktop
