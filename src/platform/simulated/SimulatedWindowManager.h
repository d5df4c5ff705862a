#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/simulated/SimulatedClock.h"
#include "platform/simulated/SimulatedPrograms.h"
#include "platform/simulated/SimulatedScreens.h"

namespace lumatile {

/// The habits in which window managers differ.
struct WindowManagerPolicy {
    /// Between a request and its effect, seconds.
    double latencySeconds = 0;
    /// Refuses every request to move or resize, and says so.
    bool refusesMoves = false;
    /// Neither does what is asked nor answers.
    bool leavesUnanswered = false;
    /// Lets a program have its size only in the steps that it asked for.
    bool honoursIncrements = true;
    /// Moves a window back so that it lies on its screen whole, where it fits.
    bool keepsWindowsWhole = false;
    /// Brings windows of an unplugged screen to the primary one.
    bool rescuesStranded = true;
};

/// A request to move, resize or both; in the screens' arrangement.
struct WindowRequest {
    std::optional<Point> position;
    std::optional<Size> size;
};

/// Who decides where windows are. What is asked of it is not always what becomes of it.
class SimulatedWindowManager {
public:
    /// All outlive the window manager.
    SimulatedWindowManager(SimulatedClock& clock, SimulatedScreens& screens,
                           SimulatedPrograms& programs)
        : clock_(clock), screens_(screens), programs_(programs) {}

    WindowManagerPolicy policy;

    /// The state of one request; it may be settled later.
    struct Answer {
        bool isSettled = false;
        bool isApplied = false;  ///< False as well when the window was gone by then.
    };

    std::shared_ptr<const Answer> request(WindowID id, const WindowRequest& request);

    /// What the user does with the pointer; no policy is in the way but the window's own size rule.
    void moveByHand(WindowID id, const Rect& arranged);

    /// Windows whose centre lies on no screen come to the primary screen's top-left corner.
    void rescueStranded();

private:
    void apply(SimulatedWindow& window, const WindowRequest& request) const;
    Size allowedSize(const SimulatedWindow& window, const Size& outer) const;
    void keepWhole(SimulatedWindow& window) const;

    SimulatedClock& clock_;
    SimulatedScreens& screens_;
    SimulatedPrograms& programs_;
    std::uint64_t lastAnimation_ = 0;
};

}  // namespace lumatile
