#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <utility>

#include "platform/simulated/SimulatedClock.h"
#include "ports/RunLoop.h"

namespace lumatile {

/// The main thread's run loop on virtual time. Posts run before timers, posts in their order,
/// timers in the order in which they fall due.
class SimulatedRunLoop final : public RunLoop {
public:
    /// @param clock outlives the run loop
    explicit SimulatedRunLoop(SimulatedClock& clock) : clock_(clock) {}

    double now() override { return clock_.wallSeconds(); }

    /// Intervals below a millisecond, or that are not numbers, are taken as a millisecond. Ticks
    /// that were missed while the program waited in a call are made up for by a single one.
    std::unique_ptr<RunLoopTimer> repeat(double seconds, std::function<void()> tick) override;

    void post(std::function<void()> work) override;

    /// Lets `seconds` pass and runs what falls due. Called from inside a callback it only lets the
    /// time pass, since the loop is not entered twice.
    void advance(double seconds);

    /// Runs what has been posted, also by other posts, without letting time pass. Nothing from
    /// inside a callback.
    void settle();

    /// Timers whose handle is still held.
    std::size_t timerCount() const;

private:
    using Nanoseconds = SimulatedClock::Nanoseconds;

    struct Timer {
        Nanoseconds interval;
        // Shared, so that a tick that destroys its own handle is not torn down under its feet.
        std::shared_ptr<const std::function<void()>> tick;
    };
    class Handle;

    void schedule(std::shared_ptr<Timer> timer, Nanoseconds due);
    void runPosts();

    SimulatedClock& clock_;
    std::map<std::pair<Nanoseconds, std::uint64_t>, std::shared_ptr<Timer>> timers_;
    std::deque<std::function<void()>> posts_;
    std::uint64_t scheduled_ = 0;
    bool isRunning_ = false;
};

}  // namespace lumatile
