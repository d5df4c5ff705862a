#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "platform/simulated/SimulatedInput.h"
#include "platform/simulated/SimulatedPrograms.h"
#include "platform/simulated/SimulatedRunLoop.h"
#include "platform/simulated/SimulatedScreens.h"
#include "platform/simulated/SimulatedWindowManager.h"
#include "ports/MouseEventSource.h"

namespace lumatile {

/// The mouse and the hand on it. A window that is pressed follows the pointer, as window managers
/// have it; who watches is told from the run loop. Points are in the accessibility space.
class SimulatedMouse final : public MouseEventSource {
public:
    /// What a press does to the window below it.
    enum class Grip : std::uint8_t {
        move,
        resize,  ///< By the bottom-right corner.
        none     ///< A click into its content.
    };

    /// All outlive the mouse.
    SimulatedMouse(SimulatedRunLoop& runLoop, SimulatedInput& input, SimulatedScreens& screens,
                   SimulatedPrograms& programs, SimulatedWindowManager& windowManager)
        : runLoop_(runLoop),
          input_(input),
          screens_(screens),
          programs_(programs),
          windowManager_(windowManager) {}

    std::unique_ptr<MouseTap> createTap(Mask mask, Handler handler) override;

    void setTakesDrops(bool takesDrops) override { isTakenFromDesktop_ = takesDrops; }

    /// Whether the desktop leaves it to the program what becomes of a window that is dropped at an
    /// edge.
    bool isTakenFromDesktop() const { return isTakenFromDesktop_; }

    /// Puts the left button down.
    void press(const Point& point, Grip grip = Grip::move);

    /// Moves the pointer, and with it what has been gripped.
    void moveTo(const Point& point);

    void release();

    /// The same with the right button, of which nobody is told.
    void dragWithRightButton(const Point& from, const Point& to);

    /// The next release is never told, as when the window system loses it.
    void loseRelease() { isReleaseLost_ = true; }

    /// From now on no tap can be made, or again.
    void setRefusing(bool refusing) { isRefusing_ = refusing; }

    /// The window system takes all taps away and tells them so.
    void disableTaps();

    /// Taps that there are; enabled or not.
    std::size_t taps() const;

    /// Taps asked for so far, with what mask.
    const std::vector<Mask>& masks() const { return masks_; }

private:
    struct Watcher {
        Mask mask;
        Handler handler;
        bool isEnabled = false;
    };
    class Tap;

    void tell(MouseEventType type);
    void drag(const Point& to);

    SimulatedRunLoop& runLoop_;
    SimulatedInput& input_;
    SimulatedScreens& screens_;
    SimulatedPrograms& programs_;
    SimulatedWindowManager& windowManager_;
    std::vector<std::weak_ptr<Watcher>> watchers_;
    std::vector<Mask> masks_;
    Point at_;
    std::optional<WindowID> gripped_;
    Grip grip_ = Grip::none;
    bool isDown_ = false;
    bool isReleaseLost_ = false;
    bool isTakenFromDesktop_ = false;
    bool isRefusing_ = false;
};

}  // namespace lumatile
