#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <utility>

namespace lumatile {

/// Virtual time and what happens in it outside this program: other programs, the window manager,
/// hands on the hardware. Time stands still until somebody lets it pass, so every run is the same.
class SimulatedClock {
public:
    using Nanoseconds = std::int64_t;

    /// The wall-clock time at which every desktop starts, seconds since 1970-01-01 00:00 UTC.
    static constexpr double startOfTime = 1'700'000'000;

    /// @return whole nanoseconds; 0 for what is not a positive number, at most about 30 years
    static Nanoseconds fromSeconds(double seconds);

    /// Time since the desktop started. Never runs backwards.
    Nanoseconds sinceStart() const { return now_; }

    /// Wall-clock time, seconds since 1970-01-01 00:00 UTC.
    double wallSeconds() const;

    /// Sets the wall clock forward, or back where negative. No time passes.
    void jump(double seconds) { jumps_ += seconds; }

    /// Runs `event` when `delay` has passed, also while this program waits in a call.
    void happen(Nanoseconds delay, std::function<void()> event);

    /// Lets time pass up to `moment` and everything happen that falls into it.
    void elapseTo(Nanoseconds moment);

    /// As `elapseTo`, but stops as soon as `done` holds.
    /// @return whether it came to hold
    bool elapseTo(Nanoseconds moment, const std::function<bool()>& done);

private:
    // Events of one moment happen in the order in which they were announced.
    std::map<std::pair<Nanoseconds, std::uint64_t>, std::function<void()>> events_;
    Nanoseconds now_ = 0;
    std::uint64_t announced_ = 0;
    double jumps_ = 0;
};

}  // namespace lumatile
