#include "onboarding/SystemTilingMonitor.h"

namespace lumatile {

SystemTilingMonitor::SystemTilingMonitor(Read read, Repeat repeat)
    : read_(std::move(read)), repeat_(std::move(repeat)), tiling_(read_()) {}

void SystemTilingMonitor::start() {
    timer_.reset();
    timer_ = repeat_(interval, [this] { refresh(); });
}

void SystemTilingMonitor::refresh() {
    const SystemTiling now = read_();
    if (now == tiling_) {
        return;
    }
    tiling_ = now;
    // A copy, since whoever is told may hand in another.
    if (const auto changed = changed_) {
        changed();
    }
}

}  // namespace lumatile
