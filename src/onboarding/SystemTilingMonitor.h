#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "onboarding/SystemTiling.h"

namespace lumatile {

/// A copy of the system's tiling settings, fresh while it is started: for as long as a tip about
/// them can be seen.
class SystemTilingMonitor {
public:
    /// Seconds between two reads: soon enough for a user who looks from the settings to the tip,
    /// and there is no notification of a change that every system has.
    static constexpr double interval = 1.5;

    using Read = std::function<SystemTiling()>;

    /// Calls `tick` every `seconds` until what it answers is destroyed.
    using Repeat = std::function<std::shared_ptr<void>(double seconds, std::function<void()> tick)>;

    /// Reads once.
    SystemTilingMonitor(Read read, Repeat repeat);
    SystemTilingMonitor(const SystemTilingMonitor&) = delete;
    SystemTilingMonitor& operator=(const SystemTilingMonitor&) = delete;
    ~SystemTilingMonitor() = default;

    /// As it was last read.
    const SystemTiling& tiling() const { return tiling_; }

    /// What to call after `tiling` has become another; not called when a read finds the same.
    void onChange(std::function<void()> changed) { changed_ = std::move(changed); }

    /// Reads again and again; a start while started begins a new interval.
    void start();
    void stop() { timer_.reset(); }
    bool isStarted() const { return timer_ != nullptr; }

private:
    void refresh();

    Read read_;
    Repeat repeat_;
    std::function<void()> changed_;
    SystemTiling tiling_;
    std::shared_ptr<void> timer_;
};

}  // namespace lumatile
