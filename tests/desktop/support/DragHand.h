#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/TestWindow.h"

namespace lumatile::desktop {

/// The user's hand on a window.
class DragHand {
public:
    /// @param input the hand's mouse; outlives the hand
    /// @param button of the device, whatever programs take it for
    /// @param pressed runs between a press and the first movement; false ends the attempt
    explicit DragHand(InputDriver& input, std::uint8_t button = 1,
                      std::function<bool()> pressed = nullptr)
        : input_(input), button_(button), pressed_(std::move(pressed)) {}

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

    /// Takes it at a place of the root, such as a corner that resizes it.
    bool gripAt(TestWindow& window, int x, int y);

    /// Presses at a place of the root and expects nothing to follow.
    void press(int x, int y);

    /// Presses once more, as after a release that nobody heard of.
    void pressAgain();

    /// Moves the pointer there, by a few dozen pixels at a time.
    void moveTo(int x, int y);

    void letGo();

private:
    bool pressAndPull(XClient& client, xcb_window_t window, int x, int y);
    bool pull(XClient& client, xcb_window_t window);
    bool isAtPointer(XClient& client, xcb_window_t window);
    void report(int x, int y);

    InputDriver& input_;
    std::uint8_t button_;
    std::function<bool()> pressed_;
    int x_ = 0;
    int y_ = 0;
    bool isAltHeld_ = false;
    bool isOtherSpot_ = false;
};

}  // namespace lumatile::desktop
