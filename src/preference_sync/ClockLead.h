#pragma once

#include <optional>

namespace lumatile {

/// By how much some clock is ahead of this computer's, to judge by the times of the sets that are
/// found: a set cannot have been changed later than now.
class ClockLead {
public:
    /// Leads that are worth a word, seconds; clocks that are set by the network differ by less.
    static constexpr double tolerated = 60;

    /// Takes note of a set that was found `now`, both seconds since 1970-01-01 00:00 UTC.
    void note(double changeTime, double now);

    /// Seconds; absent while the set that was found last is not of the future.
    std::optional<double> seconds() const { return seconds_; }

private:
    std::optional<double> seconds_;
};

}  // namespace lumatile
