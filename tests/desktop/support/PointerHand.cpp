#include "tests/desktop/support/PointerHand.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace lumatile::desktop {

namespace {

// Of a title bar; below a window's upper edge that resizes it, left of its buttons.
constexpr int belowEdge = 12;

// Window managers begin to move a window when the pointer has come so far, and some more.
constexpr int firstPull = 30;

constexpr int stride = 60;

// Of an ordinary mouse. Window managers and the program are made for mice, which tell of a movement
// 125 times a second at most, not for a thousand movements at once.
constexpr std::chrono::milliseconds reportTime{8};

}  // namespace

bool PointerHand::grip(const PixelRect& frame, const std::function<bool()>& follows) {
    // Two presses on one spot are a double click, even with a whole drag in between.
    isOtherSpot_ = !isOtherSpot_;
    return gripAt(frame.x + frame.width / (isOtherSpot_ ? 3 : 4), frame.y + belowEdge, follows);
}

bool PointerHand::gripAt(int x, int y, const std::function<bool()>& follows) {
    press(x, y);
    return (!pressed_ || pressed_()) && pull(follows);
}

void PointerHand::press(int x, int y) {
    x_ = x;
    y_ = y;
    pointer_.movePointer(x_, y_);
    pointer_.buttonDown(button_);
}

bool PointerHand::pull(const std::function<bool()>& follows) {
    for (int pulled = 0; pulled < firstPull; pulled += 3) {
        moveBy(3, 3);
    }
    // A program that draws its own frame has the window manager move it, which sees nothing of the
    // movements before that.
    int further = 1;
    return pointer_.waitUntil(
        [&] {
            if (follows()) {
                return true;
            }
            moveBy(further, further);
            further = -further;
            return false;
        },
        Deadline::usual());
}

void PointerHand::report(int x, int y) {
    std::this_thread::sleep_for(reportTime);
    x_ = x;
    y_ = y;
    pointer_.movePointer(x_, y_);
}

void PointerHand::moveTo(int x, int y) {
    while (x_ != x || y_ != y) {
        report(x_ + std::clamp(x - x_, -stride, stride), y_ + std::clamp(y - y_, -stride, stride));
    }
}

void PointerHand::letGo() {
    std::this_thread::sleep_for(reportTime);
    pointer_.buttonUp(button_);
}

}  // namespace lumatile::desktop
