#pragma once

#include "tests/desktop/support/InputDriver.h"
#include "tests/desktop/support/TestWindow.h"

namespace lumatile::desktop {

/// The user's hand on a window.
class DragHand {
public:
    /// @param input the hand's mouse; outlives the hand
    explicit DragHand(InputDriver& input) : input_(input) {}

    /// Takes the window by its title bar and moves it a little way, until it follows.
    /// @return false when it does not
    bool grip(TestWindow& window);

    /// Takes it anywhere, with Alt held.
    bool gripWithAlt(TestWindow& window);

    /// Moves the pointer there, by a few dozen pixels at a time.
    void moveTo(int x, int y);

    void letGo();

private:
    bool pull(TestWindow& window);
    void report(int x, int y);

    InputDriver& input_;
    int x_ = 0;
    int y_ = 0;
    bool isAltHeld_ = false;
};

}  // namespace lumatile::desktop
