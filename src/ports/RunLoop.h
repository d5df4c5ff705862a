#pragma once

#include <functional>
#include <memory>

namespace lumatile {

/// A repeating timer; destroying it invalidates it.
class RunLoopTimer {
public:
    RunLoopTimer() = default;
    RunLoopTimer(const RunLoopTimer&) = delete;
    RunLoopTimer& operator=(const RunLoopTimer&) = delete;
    virtual ~RunLoopTimer() = default;
};

/// Port: the main thread's run loop and its clock.
class RunLoop {
public:
    virtual ~RunLoop() = default;

    /// Wall-clock time, seconds since 1970-01-01 00:00 UTC.
    virtual double now() = 0;

    /// Calls `tick` every `seconds` until the handle is destroyed. Coarse: a tick may be late by a
    /// few per cent of the interval.
    virtual std::unique_ptr<RunLoopTimer> repeat(double seconds, std::function<void()> tick) = 0;

    /// Calls `work` once, after the present call has returned to the run loop.
    virtual void post(std::function<void()> work) = 0;
};

}  // namespace lumatile
