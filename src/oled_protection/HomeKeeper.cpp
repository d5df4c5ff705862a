#include "oled_protection/HomeKeeper.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace lumatile {

namespace {

bool isBetween(double value, double a, double b) {
    constexpr double tolerance = OrbitScheduler::outsideMoveTolerance;
    return value >= std::min(a, b) - tolerance && value <= std::max(a, b) + tolerance;
}

}  // namespace

/// A move that a hanging program cut short may have changed some of the four numbers.
bool HomeKeeper::Known::mayHaveBeenLeftAt(const Rect& frame) const {
    return isBetween(frame.x, left.x, before.x) && isBetween(frame.y, left.y, before.y) &&
           isBetween(frame.width, left.width, before.width) &&
           isBetween(frame.height, left.height, before.height);
}

HomeKeeper::Known HomeKeeper::Known::seenFrom(const Point& other) const {
    const double dx = origin.x - other.x;
    const double dy = origin.y - other.y;
    return {window, home.offsetBy(dx, dy), left.offsetBy(dx, dy), before.offsetBy(dx, dy), other};
}

void HomeKeeper::sync(const Windows& windows, const Point& origin) {
    meet(windows, origin, origin != origin_);
}

void HomeKeeper::add(Windows windows, const Point& origin) {
    for (const auto& [key, entry] : orbit_.tracked()) {
        windows.push_back(entry.window);
    }
    meet(windows, origin, true);
}

/// @param looksAtAll also at the windows that the orbit has not lost sight of
void HomeKeeper::meet(const Windows& windows, const Point& origin, bool looksAtAll) {
    note();
    const auto former = orbit_.tracked();
    origin_ = origin;
    orbit_.sync(windows);
    const auto present = orbit_.tracked();
    for (const auto& [key, entry] : present) {
        if (!former.contains(key)) {
            giveBack(key, entry.lastApplied);
        } else if (looksAtAll) {
            if (const std::optional<Rect> frame = entry.window->frame()) {
                giveBack(key, *frame);
            }
        }
    }
    note();
    forgetGoneWindows();
}

void HomeKeeper::step(double now) {
    const auto former = orbit_.tracked();
    orbit_.step(now);
    for (const auto& [key, was] : former) {
        const std::optional<OrbitScheduler::Tracked> is = orbit_.tracked(key);
        const auto known = known_.find(key);
        if (!is || known == known_.end()) {
            continue;
        }
        if (is->home != was.home) {
            giveBack(key, is->lastApplied);
        } else if (is->lastApplied != was.lastApplied) {
            known->second = {is->window, is->home, is->lastApplied, was.lastApplied, origin_};
        }
    }
    note();
}

void HomeKeeper::stop() {
    note();
    orbit_.restoreHomes();
    for (const auto& [key, entry] : orbit_.tracked()) {
        known_.at(key).left = entry.lastApplied;
    }
    orbit_.stop();
}

/// What the orbit has now, where it is not what was last known: a new window, or a snapped one.
void HomeKeeper::note() {
    for (const auto& [key, entry] : orbit_.tracked()) {
        Known& known = known_[key];
        if (!known.window || known.home != entry.home || known.left != entry.lastApplied) {
            known = {entry.window, entry.home, entry.lastApplied, entry.lastApplied, origin_};
        }
    }
}

/// @param frame where the window is
void HomeKeeper::giveBack(const AXElementKey& key, const Rect& frame) {
    const auto found = known_.find(key);
    if (found == known_.end()) {
        return;
    }
    // A window manager may have left the window where it was on the desk, or have taken it along
    // with its screen.
    for (const Known& known : {found->second, found->second.seenFrom(origin_)}) {
        if (known.mayHaveBeenLeftAt(frame)) {
            orbit_.rehome(key, known.home, frame);
            found->second = {known.window, known.home, frame, frame, origin_};
            return;
        }
    }
}

void HomeKeeper::forgetGoneWindows() {
    if (known_.size() <= most_) {
        return;
    }
    std::erase_if(known_, [this](const auto& entry) {
        return !orbit_.tracked(entry.first) && !entry.second.window->pid();
    });
    most_ = std::max(fewWindows, 2 * known_.size());
}

}  // namespace lumatile
