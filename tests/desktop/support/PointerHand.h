#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/Pointer.h"

namespace lumatile::desktop {

/// Moves a pointer as people do, with or without a window in its grip.
class PointerHand {
public:
    /// @param pointer outlives the hand
    /// @param pressed runs between a press and the first movement; false ends the attempt
    explicit PointerHand(Pointer& pointer, std::uint8_t button = 1,
                         std::function<bool()> pressed = nullptr)
        : pointer_(pointer), button_(button), pressed_(std::move(pressed)) {}

    /// Takes the window by its title bar and moves it a little way, until it follows.
    /// @param frame where the window is
    /// @param follows whether it has moved since
    /// @return false when it does not
    bool grip(const PixelRect& frame, const std::function<bool()>& follows);

    /// The same at any place.
    bool gripAt(int x, int y, const std::function<bool()>& follows);

    /// Presses there and expects nothing to follow.
    void press(int x, int y);

    /// Presses once more, as after a release that nobody heard of.
    void pressAgain() { pointer_.buttonDown(button_); }

    /// Moves the pointer there, by a few dozen pixels at a time.
    void moveTo(int x, int y);

    /// Moves the pointer so far, at once.
    void moveBy(int x, int y) { report(x_ + x, y_ + y); }

    void letGo();

private:
    bool pull(const std::function<bool()>& follows);
    void report(int x, int y);

    Pointer& pointer_;
    std::uint8_t button_;
    std::function<bool()> pressed_;
    int x_ = 0;
    int y_ = 0;
    bool isOtherSpot_ = false;
};

}  // namespace lumatile::desktop
