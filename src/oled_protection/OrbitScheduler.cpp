#include "oled_protection/OrbitScheduler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>
#include <utility>

namespace lumatile {

namespace {

/// Differences up to this count as none, pixels: window systems place on whole pixels.
constexpr double placedTolerance = 0.5;

/// By how much a home is grown on every side where its display is unknown, pixels. Far enough that
/// none of its edges can pass for one on a border.
constexpr double unboundedMargin = 10'000;

bool differsInSize(const Rect& a, const Rect& b) {
    return std::abs(a.width - b.width) >= placedTolerance ||
           std::abs(a.height - b.height) >= placedTolerance;
}

}  // namespace

OrbitScheduler::OrbitScheduler(const OrbitConfig& config, const std::optional<JitterPolicy>& jitter)
    : config_(config), jitter_(jitter), path_(makePath(config.radiusPx, config.stridePx)) {}

std::vector<Offset> OrbitScheduler::makePath(std::int64_t radius, std::int64_t stride) {
    if (radius < 1 || stride < 1) {
        return {Offset{}};
    }
    const std::int64_t half = std::min(radius, OrbitConfig::maximumRadiusPx);
    const std::int64_t side = 2 * half;
    constexpr std::array<std::array<std::int64_t, 2>, 4> directions{
        {{1, 0}, {0, 1}, {-1, 0}, {0, -1}}};

    std::vector<Offset> path;
    path.reserve(static_cast<std::size_t>(4 * ((side - 1) / stride + 1)));
    std::int64_t x = -half;
    std::int64_t y = -half;
    for (const auto& [dx, dy] : directions) {
        std::int64_t covered = 0;
        while (covered < side) {
            path.push_back({static_cast<double>(x), static_cast<double>(y)});
            const std::int64_t advance = std::min(side - covered, stride);
            x += dx * advance;
            y += dy * advance;
            covered += advance;
        }
    }
    return path;
}

void OrbitScheduler::setConfig(const OrbitConfig& config) {
    const bool wentOff = config_.enabled && !config.enabled;
    config_ = config;
    path_ = makePath(config.radiusPx, config.stridePx);
    stepIndex_ = config.enabled ? stepIndex_ % path_.size() : 0;
    if (wentOff && !jitter_) {
        restoreHomes();
    }
}

void OrbitScheduler::setJitter(const std::optional<JitterPolicy>& jitter) {
    const bool wentOff = jitter_ && !jitter;
    jitter_ = jitter;
    if (wentOff && !config_.enabled) {
        restoreHomes();
    }
}

void OrbitScheduler::setBounds(Bounds bounds) { bounds_ = std::move(bounds); }

void OrbitScheduler::sync(const std::vector<std::shared_ptr<WindowControlling>>& windows) {
    std::unordered_set<AXElementKey> given;
    for (const std::shared_ptr<WindowControlling>& window : windows) {
        if (!window) {
            continue;
        }
        const AXElementKey key = window->key();
        given.insert(key);
        if (const auto found = tracked_.find(key); found != tracked_.end()) {
            found->second.window = window;
        } else if (const std::optional<Rect> frame = window->frame()) {
            tracked_.insert_or_assign(key, Tracked{window, *frame, *frame});
        }
    }
    std::erase_if(tracked_, [&given](const auto& entry) { return !given.contains(entry.first); });
}

void OrbitScheduler::step(double now) {
    if ((!config_.enabled && !jitter_) || tracked_.empty()) {
        return;
    }
    Offset offset;
    if (config_.enabled) {
        stepIndex_ = (stepIndex_ + 1) % path_.size();
        offset = path_[stepIndex_];
    }
    for (const AXElementKey& key : trackedKeys()) {
        stepWindow(key, offset, now);
    }
    readBack();
}

void OrbitScheduler::noteSnapped(const std::shared_ptr<WindowControlling>& window,
                                 const std::optional<Rect>& home) {
    if (!window) {
        return;
    }
    if (const std::optional<Rect> current = window->frame()) {
        tracked_.insert_or_assign(window->key(),
                                  Tracked{window, home.value_or(*current), *current});
    }
}

void OrbitScheduler::rehome(const AXElementKey& key, const Rect& home, const Rect& lastApplied) {
    if (const auto found = tracked_.find(key); found != tracked_.end()) {
        found->second.home = home;
        found->second.lastApplied = lastApplied;
    }
}

void OrbitScheduler::restoreHomes() {
    for (const AXElementKey& key : trackedKeys()) {
        restoreHome(key);
    }
    readBack();
    stepIndex_ = 0;
}

void OrbitScheduler::stop() {
    restoreHomes();
    tracked_.clear();
}

std::optional<OrbitScheduler::Tracked> OrbitScheduler::tracked(const AXElementKey& key) const {
    const auto found = tracked_.find(key);
    return found != tracked_.end() ? std::optional(found->second) : std::nullopt;
}

// A call on a window can come back into the scheduler (an adapter that waits for an answer may meet
// a key press meanwhile), so nothing here holds on to an entry across one: the keys are copied, and
// an entry is looked up again before it is written.
std::vector<AXElementKey> OrbitScheduler::trackedKeys() const {
    std::vector<AXElementKey> keys;
    keys.reserve(tracked_.size());
    for (const auto& [key, entry] : tracked_) {
        keys.push_back(key);
    }
    return keys;
}

void OrbitScheduler::stepWindow(const AXElementKey& key, const Offset& offset, double now) {
    const std::optional<Tracked> entry = tracked(key);
    if (!entry) {
        return;
    }
    const std::optional<Rect> current = entry->window->frame();
    if (!current) {
        tracked_.erase(key);
        return;
    }
    if (!current->isWithin(outsideMoveTolerance, entry->lastApplied)) {
        tracked_.insert_or_assign(key, Tracked{entry->window, *current, *current});
        return;
    }
    Rect target = entry->home;
    if (const std::optional<JitterPolicy> jitter = jitter_) {
        const std::optional<Rect> area = bounds_ ? bounds_(entry->home) : std::nullopt;
        target =
            jitter->adjust(entry->home, area.value_or(entry->home.grownBy(unboundedMargin)), now);
    }
    target = target.offsetBy(offset.dx, offset.dy);
    if (target.isWithin(placedTolerance, *current)) {
        return;
    }
    if (differsInSize(target, *current)) {
        entry->window->setFrame(target);
    } else {
        entry->window->setPosition(target.origin());
    }
    noteWritten(key, target);
    lastShift_ = OrbitShift{offset, now};
}

void OrbitScheduler::restoreHome(const AXElementKey& key) {
    const std::optional<Tracked> entry = tracked(key);
    if (!entry) {
        return;
    }
    const std::optional<Rect> current = entry->window->frame();
    if (!current || !current->isWithin(outsideMoveTolerance, entry->lastApplied) ||
        current->isWithin(placedTolerance, entry->home)) {
        return;
    }
    if (current->size() == entry->home.size()) {
        entry->window->setPosition(entry->home.origin());
    } else {
        entry->window->setFrame(entry->home);
    }
    noteWritten(key, entry->home);
}

void OrbitScheduler::noteWritten(const AXElementKey& key, const Rect& frame) {
    if (const auto found = tracked_.find(key); found != tracked_.end()) {
        found->second.lastApplied = frame;
        written_.push_back(key);
    }
}

// Where reading waits for what was written, it does so once for all windows.
void OrbitScheduler::readBack() {
    for (const AXElementKey& key : std::exchange(written_, {})) {
        const std::optional<Tracked> entry = tracked(key);
        const std::optional<Rect> current = entry ? entry->window->frame() : std::nullopt;
        if (const auto found = tracked_.find(key); found != tracked_.end() && current) {
            found->second.lastApplied = *current;
        }
    }
}

}  // namespace lumatile
