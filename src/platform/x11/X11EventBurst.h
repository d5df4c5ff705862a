#pragma once

#include <chrono>
#include <cstdint>

namespace lumatile {

/// Whether events of one kind come faster than anybody reads what they tell of.
class X11EventBurst {
public:
    using Clock = std::chrono::steady_clock;

    /// So many of them, each within so long of the one before, and nobody has looked. A placing
    /// causes three to six, and up to a dozen together with what undoes a state before it.
    static constexpr int mostEvents = 24;
    static constexpr std::chrono::milliseconds longestGap{100};

    /// Notes one more event.
    /// @param reading a number that changes whenever somebody reads
    /// @return whether it is one too many; then the counting starts anew
    bool note(Clock::time_point now, std::uint64_t reading) {
        if (reading != reading_ || now - last_ > longestGap) {
            reading_ = reading;
            events_ = 0;
        }
        last_ = now;
        if (++events_ <= mostEvents) {
            return false;
        }
        events_ = 0;
        return true;
    }

private:
    std::uint64_t reading_ = 0;
    Clock::time_point last_;
    int events_ = 0;
};

}  // namespace lumatile
