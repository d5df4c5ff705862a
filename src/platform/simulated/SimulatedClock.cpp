#include "platform/simulated/SimulatedClock.h"

#include <algorithm>
#include <cmath>

namespace lumatile {

namespace {

constexpr double nanosecondsPerSecond = 1e9;
// Sums of two such times still fit the integer.
constexpr double longestSeconds = 1e9;

}  // namespace

SimulatedClock::Nanoseconds SimulatedClock::fromSeconds(double seconds) {
    if (!(seconds > 0)) {
        return 0;
    }
    return std::llround(std::min(seconds, longestSeconds) * nanosecondsPerSecond);
}

double SimulatedClock::wallSeconds() const {
    return startOfTime + jumps_ + static_cast<double>(now_) / nanosecondsPerSecond;
}

void SimulatedClock::happen(Nanoseconds delay, std::function<void()> event) {
    events_.emplace(std::pair{now_ + delay, announced_++}, std::move(event));
}

void SimulatedClock::elapseTo(Nanoseconds moment) {
    elapseTo(moment, [] { return false; });
}

bool SimulatedClock::elapseTo(Nanoseconds moment, const std::function<bool()>& done) {
    while (!done()) {
        const auto next = events_.begin();
        if (next == events_.end() || next->first.first > moment) {
            now_ = std::max(now_, moment);
            return done();
        }
        now_ = std::max(now_, next->first.first);
        const auto event = std::move(next->second);
        events_.erase(next);
        event();
    }
    return true;
}

}  // namespace lumatile
