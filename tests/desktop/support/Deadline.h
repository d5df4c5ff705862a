#pragma once

#include <algorithm>
#include <chrono>

namespace lumatile::desktop {

/// The latest moment by which something must have happened. Waits end at the event; a deadline only
/// decides when a test gives up, so it is generous for slow machines and sanitizers.
class Deadline {
public:
    static Deadline in(std::chrono::milliseconds time) { return Deadline(Clock::now() + time); }
    static Deadline usual() { return in(std::chrono::seconds(20)); }

    bool isOver() const { return Clock::now() >= end_; }

    /// Milliseconds left, never negative and at most `longest`; for poll(2).
    int milliseconds(int longest) const {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now()).count();
        return static_cast<int>(std::clamp<long long>(left, 0, longest));
    }

private:
    using Clock = std::chrono::steady_clock;

    explicit Deadline(Clock::time_point end) : end_(end) {}

    Clock::time_point end_;
};

}  // namespace lumatile::desktop
