#include "platform/x11/X11WindowWriter.h"

#include <algorithm>
#include <chrono>
#include <optional>

namespace lumatile {

X11WindowWriter::X11WindowWriter(X11Connection& connection, X11Monitors& monitors,
                                 X11WindowMirror& mirror, double longest)
    : connection_(connection),
      monitors_(monitors),
      mirror_(mirror),
      longest_(longest),
      patience_(X11PlacingWait::Patience::of(longest)),
      probe_(connection, mirror),
      requests_(connection),
      tile_(connection, mirror) {}

Rect X11WindowWriter::frame(const X11Window& window) {
    const X11PixelRect outer = tile_.outerAtRelease(window).value_or(window.frame().outer());
    return X11PlacingPlanner::frame(window, outer, rootOrigin());
}

bool X11WindowWriter::write(xcb_window_t id, std::uint64_t serial, const PlacingWish& wish,
                            double timeout) {
    const bool isDrop = wish.position && tile_.takeDrop();
    // What a window manager that does not answer will make of the release is not known: it may
    // tile.
    const bool isTiled = isDrop && !awaitWindowManager(timeout);
    X11Window* window = writable(id, serial);
    if (window == nullptr) {
        return false;
    }
    const bool isDone =
        isDrop ? writeDrop(*window, wish, isTiled, timeout) : writeNow(*window, wish, timeout);
    if (isDone || !wish.size || !wish.position || probe_.isSilent()) {
        return isDone;
    }
    // The window may have moved itself when it took the size, and some sizes cannot be asked for.
    window = writable(id, serial);
    return window != nullptr && writeNow(*window, {wish.position, std::nullopt}, timeout);
}

X11Window* X11WindowWriter::writable(xcb_window_t id, std::uint64_t serial) {
    mirror_.refresh();
    return mirror_.hasWindowManager() ? mirror_.findManaged(id, serial) : nullptr;
}

bool X11WindowWriter::writeNow(X11Window& window, const PlacingWish& wish, double timeout) {
    const std::optional<X11PlacingPlan> plan = X11PlacingPlanner::plan(window, wish, rootOrigin());
    if (!plan) {
        return false;
    }
    if (plan->requests.empty()) {
        window.written = plan->order.outcome(window);
        return true;
    }
    return carryOut(window, *plan, timeout);
}

bool X11WindowWriter::writeDrop(X11Window& window, const PlacingWish& wish, bool isTiled,
                                double timeout) {
    const xcb_window_t id = window.id;
    const std::uint64_t serial = window.serial;
    const std::optional<X11PlacingPlan> plan = X11PlacingPlanner::plan(window, wish, rootOrigin());
    if (!plan) {
        return false;
    }
    // A window that was just dragged does not lie at the target. One that does is in a tile by now,
    // and so is one that does not go there.
    if (!isTiled && !window.frame().outer().hasOriginOf(plan->order.target)) {
        window.refusedAt = window.answers;  // Whether it does is to be known at once.
        if (carryOut(window, *plan, timeout)) {
            return true;
        }
    }
    const X11Window* tiled = writable(id, serial);
    if (tiled == nullptr) {
        return false;
    }
    requests_.send(id, X11PlacingPlanner::untiling(*tiled));
    // A window manager that is too slow to answer gets it all the same: it takes one after another.
    awaitWindowManager(timeout);
    X11Window* freed = writable(id, serial);
    if (freed == nullptr) {
        return false;
    }
    std::optional<X11PlacingPlan> again = X11PlacingPlanner::plan(*freed, wish, rootOrigin());
    if (!again) {
        return false;
    }
    if (again->requests.empty()) {
        // It may be in the tile yet as far as is known, and is about to leave it.
        again->requests.emplace_back(again->order.request(*freed));
    }
    // A program that draws its own frame drops its shadow in some states and casts it anew.
    again->order.leavesState = true;
    return carryOut(*freed, *again, timeout);
}

bool X11WindowWriter::carryOut(X11Window& window, const X11PlacingPlan& plan, double timeout) {
    X11PlacingWait wait({connection_, mirror_, probe_, requests_}, patience_, window, plan.order,
                        bounded(timeout));
    requests_.send(window.id, plan.requests);
    window.written = plan.order.expectation(window);
    if (probe_.isSilent()) {
        return false;
    }
    if (window.refusedAt == window.answers) {
        // It takes messages but had its own idea the last time; so whether it has again is known
        // as soon as it has dealt with this one.
        wait.probe();
    }
    return wait.await();
}

bool X11WindowWriter::awaitWindowManager(double timeout) {
    if (probe_.isSilent()) {
        return false;
    }
    const X11Connection::Clock::time_point deadline =
        X11Connection::Clock::now() + bounded(timeout);
    probe_.ask();
    while (!probe_.isAnswered()) {
        if (X11Connection::Clock::now() >= deadline || connection_.isLost()) {
            probe_.noteSilence();
            return false;
        }
        connection_.waitForEvents(deadline);
    }
    return true;
}

X11Connection::Clock::duration X11WindowWriter::bounded(double timeout) const {
    return std::chrono::duration_cast<X11Connection::Clock::duration>(
        std::chrono::duration<double>(std::clamp(timeout, 0.0, longest_)));
}

}  // namespace lumatile
