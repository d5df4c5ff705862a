#pragma once

#include <cstdint>
#include <unordered_map>

namespace lumatile {

/// Tells a fresh press from the repeats of a key that is held down. Times are the server's, in
/// milliseconds, and may wrap round.
class X11HeldKeys {
public:
    using KeyCode = std::uint8_t;
    using Milliseconds = std::uint32_t;

    /// How the server repeats keys.
    struct Repeat {
        /// The longest time between two presses reported of a key that stays down. A press after a
        /// longer one is a new press whose release was never seen.
        Milliseconds longestGap = 1000;
        /// False: every repeat comes as a release and a press at the same time.
        bool withoutReleases = true;
    };

    void setRepeat(Repeat repeat) { repeat_ = repeat; }

    /// @return true for a press that the user made, false for a repeat
    bool press(KeyCode key, Milliseconds time);

    /// The first key that went down holds the server's grab. With its release the releases of the
    /// other keys go elsewhere, so they are forgotten with it.
    void release(KeyCode key, Milliseconds time);

private:
    struct Held {
        Milliseconds lastPress = 0;
        bool released = false;  // Only where a repeat brings a release.
        Milliseconds releaseTime = 0;
    };

    std::unordered_map<KeyCode, Held> held_;
    KeyCode holder_ = 0;  // 0 is no key.
    Repeat repeat_;
};

}  // namespace lumatile
