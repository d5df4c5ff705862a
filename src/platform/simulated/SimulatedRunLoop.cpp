#include "platform/simulated/SimulatedRunLoop.h"

#include <algorithm>
#include <utility>

namespace lumatile {

namespace {

// A shorter interval would let virtual time stand still among its ticks.
constexpr SimulatedClock::Nanoseconds shortestInterval = 1'000'000;

}  // namespace

class SimulatedRunLoop::Handle final : public RunLoopTimer {
public:
    explicit Handle(std::shared_ptr<Timer> timer) : timer_(std::move(timer)) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() override { timer_->tick.reset(); }

private:
    std::shared_ptr<Timer> timer_;
};

std::unique_ptr<RunLoopTimer> SimulatedRunLoop::repeat(double seconds, std::function<void()> tick) {
    const auto timer = std::make_shared<Timer>(
        Timer{std::max(SimulatedClock::fromSeconds(seconds), shortestInterval),
              std::make_shared<const std::function<void()>>(std::move(tick))});
    schedule(timer, clock_.sinceStart() + timer->interval);
    return std::make_unique<Handle>(timer);
}

void SimulatedRunLoop::post(std::function<void()> work) { posts_.push_back(std::move(work)); }

void SimulatedRunLoop::advance(double seconds) {
    const Nanoseconds end = clock_.sinceStart() + SimulatedClock::fromSeconds(seconds);
    if (isRunning_) {
        clock_.elapseTo(end);
        return;
    }
    isRunning_ = true;
    runPosts();
    while (!timers_.empty() && timers_.begin()->first.first <= end) {
        const auto [due, timer] =
            std::pair{timers_.begin()->first.first, std::move(timers_.begin()->second)};
        timers_.erase(timers_.begin());
        if (!timer->tick) {
            continue;
        }
        clock_.elapseTo(due);
        runPosts();
        const auto tick = timer->tick;
        if (!tick) {
            continue;
        }
        // The grid of the first tick is kept, whatever was missed.
        const Nanoseconds late = clock_.sinceStart() - due;
        schedule(timer, due + timer->interval * (1 + late / timer->interval));
        (*tick)();
        runPosts();
    }
    clock_.elapseTo(end);
    runPosts();
    isRunning_ = false;
}

void SimulatedRunLoop::settle() {
    if (isRunning_) {
        return;
    }
    isRunning_ = true;
    runPosts();
    isRunning_ = false;
}

std::size_t SimulatedRunLoop::timerCount() const {
    return static_cast<std::size_t>(
        std::count_if(timers_.begin(), timers_.end(),
                      [](const auto& entry) { return entry.second->tick != nullptr; }));
}

void SimulatedRunLoop::schedule(std::shared_ptr<Timer> timer, Nanoseconds due) {
    timers_.emplace(std::pair{due, scheduled_++}, std::move(timer));
}

void SimulatedRunLoop::runPosts() {
    while (!posts_.empty()) {
        const auto work = std::move(posts_.front());
        posts_.pop_front();
        work();
    }
}

}  // namespace lumatile
