#include "tests/desktop/support/DragHand.h"

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
    return pressAndPull(client, window, frame.x + frame.width / (isOtherSpot_ ? 3 : 4),
                        frame.y + belowEdge);
}

bool DragHand::gripOfProgram(XClient& client, xcb_window_t window) {
    const Deadline deadline = Deadline::usual();
    while (!deadline.isOver()) {
        const auto before = outerFrame(client, window);
        if (!grip(client, window)) {
            return false;
        }
        const bool follows = isAtPointer(client, window);
        const auto now = outerFrame(client, window);
        if (follows && now && before && now->width == before->width &&
            now->height == before->height) {
            return true;
        }
        letGo();
    }
    return false;
}

bool DragHand::isAtPointer(XClient& client, xcb_window_t window) {
    constexpr int step = 20;
    constexpr std::chrono::seconds patience{2};
    const auto was = outerFrame(client, window);
    report(x_ + step, y_ + step);
    return XClient::waitUntil(
        [&] {
            const auto now = outerFrame(client, window);
            return now && was && now->width == was->width && now->height == was->height &&
                   now->x - was->x >= step && now->y - was->y >= step;
        },
        Deadline::in(patience));
}

bool DragHand::gripWithAlt(TestWindow& window) {
    const PixelRect frame = window.frame();
    input_.keyDown(KeyPosition::leftAlt);
    isAltHeld_ = true;
    return pressAndPull(window, window.id(), frame.x + frame.width / 2, frame.y + frame.height / 2);
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
    return XClient::waitUntil(isSomethingThere) && pressAndPull(window, window.id(), x, y);
}

bool DragHand::pressAndPull(XClient& client, xcb_window_t window, int x, int y) {
    press(x, y);
    return (!pressed_ || pressed_()) && pull(client, window);
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
    // A program that draws its own frame has the window manager move it, which sees nothing of the
    // movements before that.
    int further = 1;
    return XClient::waitUntil([&] {
        if (outerFrame(client, window) != before) {
            return true;
        }
        report(x_ + further, y_ + further);
        further = -further;
        return false;
    });
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
