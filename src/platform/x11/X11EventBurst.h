#pragma once

#include <chrono>
#include <cstdint>

namespace lumatile {

/// Whether events of one kind come faster than anybody reads what they tell of.
class X11EventBurst {
public:
    using Clock = std::chrono::steady_clock;

    /// So many of them within so long, and nobody has looked.
    static constexpr int mostEvents = 8;
    static constexpr std::chrono::milliseconds span{100};

    /// Notes one more event.
    /// @param reading a number that changes whenever somebody reads
    /// @return whether it is one too many; then the counting starts anew
    bool note(Clock::time_point now, std::uint64_t reading) {
        if (reading != reading_ || now - begin_ > span) {
            reading_ = reading;
            begin_ = now;
            events_ = 0;
        }
        if (++events_ <= mostEvents) {
            return false;
        }
        events_ = 0;
        return true;
    }

private:
    std::uint64_t reading_ = 0;
    Clock::time_point begin_;
    int events_ = 0;
};

}  // namespace lumatile
