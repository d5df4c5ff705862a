#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/PointerHand.h"
#include "tests/desktop/support/TestWindow.h"
#include "tests/desktop/support/XPointer.h"

namespace lumatile::desktop {

/// The user's hand on a window of a private X server.
class DragHand {
public:
    /// @param input the hand's mouse; outlives the hand
    /// @param button of the device, whatever programs take it for
    /// @param pressed runs between a press and the first movement; false ends the attempt
    explicit DragHand(InputDriver& input, std::uint8_t button = 1,
                      std::function<bool()> pressed = nullptr)
        : input_(input), hand_(pointer_, button, std::move(pressed)) {}
    DragHand(const DragHand&) = delete;
    DragHand& operator=(const DragHand&) = delete;
    ~DragHand() = default;

    /// Takes the window by its title bar and moves it a little way, until it follows.
    /// @return false when it does not
    bool grip(TestWindow& window) { return grip(window, window.id()); }
    /// @param client any that can ask about the window
    bool grip(XClient& client, xcb_window_t window);

    /// The same for a window of a program that draws its own frame. It may still be adapting itself
    /// to its place, which looks as if it followed, or as if it were resized by the drag: then it
    /// is let go and taken once more.
    bool gripOfProgram(XClient& client, xcb_window_t window);

    /// Takes it anywhere, with Alt held.
    bool gripWithAlt(TestWindow& window);

    /// Presses at a place of the root and expects nothing to follow.
    void press(int x, int y) { hand_.press(x, y); }

    /// Presses once more, as after a release that nobody heard of.
    void pressAgain() { hand_.pressAgain(); }

    /// Moves the pointer there, by a few dozen pixels at a time.
    void moveTo(int x, int y) { hand_.moveTo(x, y); }

    void letGo();

private:
    bool isAtPointer(XClient& client, xcb_window_t window);

    InputDriver& input_;
    XPointer pointer_{input_};
    PointerHand hand_;
    bool isAltHeld_ = false;
};

}  // namespace lumatile::desktop
