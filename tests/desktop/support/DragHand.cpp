#include "tests/desktop/support/DragHand.h"

#include <chrono>

#include "tests/desktop/support/OuterFrame.h"

namespace lumatile::desktop {

namespace {

/// Whether the window has moved since this was made.
std::function<bool()> movesFromNow(XClient& client, xcb_window_t window) {
    return [&client, window, before = outerFrame(client, window)] {
        return outerFrame(client, window) != before;
    };
}

}  // namespace

bool DragHand::grip(XClient& client, xcb_window_t window) {
    return hand_.grip(outerFrame(client, window).value_or(PixelRect{}),
                      movesFromNow(client, window));
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
    hand_.moveBy(step, step);
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
    return hand_.gripAt(frame.x + frame.width / 2, frame.y + frame.height / 2,
                        movesFromNow(window, window.id()));
}

void DragHand::letGo() {
    hand_.letGo();
    if (isAltHeld_) {
        input_.keyUp(KeyPosition::leftAlt);
        isAltHeld_ = false;
    }
    input_.roundTrip();
}

}  // namespace lumatile::desktop
