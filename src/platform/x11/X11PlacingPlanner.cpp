#include "platform/x11/X11PlacingPlanner.h"

#include <cmath>

namespace lumatile {

namespace {

using State = X11StateRequest::State;

bool isReachable(const X11PixelRect& rect) {
    const auto inside = [](int edge) {
        return std::abs(static_cast<double>(edge)) <= X11PixelRect::coordinateLimit;
    };
    return inside(rect.x) && inside(rect.y) && inside(rect.x + rect.width) &&
           inside(rect.y + rect.height);
}

X11PixelRect moved(const X11PixelRect& rect, const Point& by) {
    return {rect.x + static_cast<int>(by.x), rect.y + static_cast<int>(by.y), rect.width,
            rect.height};
}

/// Whether an answer is still to come, as far as is known.
bool isUnderWay(const X11Window& window) {
    return window.written && window.written->givenUpAt == window.frame().outer();
}

std::optional<X11PlacingOrder> move(const X11Window& window, const Point& position,
                                    const Point& origin) {
    const auto left = X11PixelRect::roundedEdge(position.x);
    const auto top = X11PixelRect::roundedEdge(position.y);
    if (!left || !top) {
        return std::nullopt;
    }
    const X11PixelRect outer = window.frame().outer();
    // A size that is still under way will be there when the position is.
    const bool waits = isUnderWay(window);
    const Size size =
        (waits ? window.written->frame : X11PlacingPlanner::frame(window, outer, origin)).size();
    const X11PixelRect& sized = waits ? window.written->became : outer;
    return X11PlacingOrder{.frame = {position.x, position.y, size.width, size.height},
                           .origin = origin,
                           .target = moved({*left, *top, sized.width, sized.height}, origin),
                           .withSize = false,
                           .leavesState = window.facts.isMaximized()};
}

std::optional<X11PlacingOrder> place(const X11Window& window, const Point& position,
                                     const Size& size, const Point& origin) {
    const Rect wanted{position.x, position.y, size.width, size.height};
    const auto rounded = X11PixelRect::rounding(wanted);
    if (!rounded) {
        return std::nullopt;
    }
    return X11PlacingOrder{.frame = wanted,
                           .origin = origin,
                           .target = moved(*rounded, origin),
                           .withSize = true,
                           .leavesState = window.facts.isMaximized() || window.facts.isShaded};
}

/// metacity keeps windows on the screen, so that a place which suits the size to come may be
/// refused to the size of now: what was asked for counts.
Point cornerFor(const X11Window& window, const Point& origin) {
    const X11PixelRect outer = window.frame().outer();
    const bool isInForce =
        window.written && window.written->became == outer && window.written->origin == origin;
    return isUnderWay(window) || isInForce
               ? window.written->asked
               : X11PlacingPlanner::frame(window, outer, origin).origin();
}

/// Whether there is nothing left to ask for.
bool isSo(const X11PlacingOrder& order, const X11Window& window) {
    if (isUnderWay(window)) {
        return false;
    }
    const X11PixelRect outer = window.frame().outer();
    if (!order.withSize) {
        return outer == order.target;
    }
    return !window.facts.isShaded &&
           (outer == order.target ||
            outer == window.frame().constrained(order.target, window.facts.sizeHints));
}

}  // namespace

Rect X11PlacingPlanner::frame(const X11Window& window, const X11PixelRect& outer,
                              const Point& origin) {
    if (window.written && window.written->became == outer && window.written->origin == origin) {
        return window.written->frame;
    }
    return outer.toRect().offsetBy(-origin.x, -origin.y);
}

std::optional<X11PlacingPlan> X11PlacingPlanner::plan(const X11Window& window,
                                                      const PlacingWish& wish,
                                                      const Point& origin) {
    // A full-screen window stays one: three window managers ignore a move, the fourth would leave
    // it full-screen by name only.
    if (window.facts.isFullScreen || wish.isEmpty()) {
        return std::nullopt;
    }
    const std::optional<X11PlacingOrder> order =
        wish.size
            ? place(window, wish.position.value_or(cornerFor(window, origin)), *wish.size, origin)
            : move(window, *wish.position, origin);
    if (!order) {
        return std::nullopt;
    }
    X11PlacingPlan plan{*order, {}};
    if (isSo(*order, window)) {
        return plan;
    }
    if (!isReachable(order->target)) {
        return std::nullopt;
    }
    if (window.facts.isMaximized()) {
        plan.requests.emplace_back(X11StateRequest{State::maximized, false});
    }
    if (order->withSize && window.facts.isShaded) {
        plan.requests.emplace_back(X11StateRequest{State::shaded, false});
    }
    plan.requests.emplace_back(order->request(window));
    return plan;
}

std::vector<X11WindowRequest> X11PlacingPlanner::untiling(const X11Window& window) {
    if (window.facts.isMaximized()) {
        return {X11StateRequest{State::maximized, false}};
    }
    // On one axis, since each axis is one more geometry that the window goes through.
    return {X11StateRequest{State::maximizedVertically, true},
            X11StateRequest{State::maximizedVertically, false}};
}

}  // namespace lumatile
