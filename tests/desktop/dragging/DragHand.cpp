#include "tests/desktop/dragging/DragHand.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "tests/desktop/support/OuterFrame.h"

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

bool DragHand::grip(XClient& client, xcb_window_t window) {
    const PixelRect frame = outerFrame(client, window).value_or(PixelRect{});
    // Two presses on one spot are a double click, even with a whole drag in between.
    isOtherSpot_ = !isOtherSpot_;
    press(frame.x + frame.width / (isOtherSpot_ ? 3 : 4), frame.y + belowEdge);
    return pull(client, window);
}

bool DragHand::gripWithAlt(TestWindow& window) {
    const PixelRect frame = window.frame();
    input_.keyDown(KeyPosition::leftAlt);
    isAltHeld_ = true;
    press(frame.x + frame.width / 2, frame.y + frame.height / 2);
    return pull(window, window.id());
}

bool DragHand::gripAt(TestWindow& window, int x, int y) {
    input_.movePointer(x, y);
    input_.roundTrip();
    // What kwin resizes a window by are windows of their own, which follow it a moment later.
    const auto isSomethingThere = [&] {
        const XReply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
            window.connection(), xcb_query_pointer(window.connection(), window.root()), nullptr));
        return pointer && pointer->child != XCB_WINDOW_NONE;
    };
    if (!XClient::waitUntil(isSomethingThere)) {
        return false;
    }
    press(x, y);
    return pull(window, window.id());
}

void DragHand::press(int x, int y) {
    x_ = x;
    y_ = y;
    input_.movePointer(x_, y_);
    input_.buttonDown(button_);
}

void DragHand::pressAgain() { input_.buttonDown(button_); }

bool DragHand::pull(XClient& client, xcb_window_t window) {
    const auto before = outerFrame(client, window);
    for (int pulled = 0; pulled < firstPull; pulled += 3) {
        report(x_ + 3, y_ + 3);
    }
    return XClient::waitUntil([&] { return outerFrame(client, window) != before; });
}

void DragHand::report(int x, int y) {
    std::this_thread::sleep_for(reportTime);
    x_ = x;
    y_ = y;
    input_.movePointer(x_, y_);
    input_.roundTrip();
}

void DragHand::moveTo(int x, int y) {
    while (x_ != x || y_ != y) {
        report(x_ + std::clamp(x - x_, -stride, stride), y_ + std::clamp(y - y_, -stride, stride));
    }
}

void DragHand::letGo() {
    std::this_thread::sleep_for(reportTime);
    input_.buttonUp(button_);
    if (isAltHeld_) {
        input_.keyUp(KeyPosition::leftAlt);
        isAltHeld_ = false;
    }
    input_.roundTrip();
}

}  // namespace lumatile::desktop
