#include "platform/x11/X11PlacingOrder.h"

#include <optional>

namespace lumatile {

X11PlaceRequest X11PlacingOrder::request(const X11Window& window) const {
    const X11WindowFrame now = window.frame();
    X11PlaceRequest result{now.placing(now.clientFor(target)), withSize};
    if (!withSize) {
        result.place.width = 0;
        result.place.height = 0;
    }
    return result;
}

bool X11PlacingOrder::isMetBy(const X11Window& window) const {
    const X11PixelRect outer = window.frame().outer();
    if (!outer.hasOriginOf(target) || (leavesState && window.facts.isMaximized())) {
        return false;
    }
    return !withSize || (!window.facts.isShaded &&
                         (outer.hasSizeOf(target) || outer.hasSizeOf(window.frame().constrained(
                                                         target, window.facts.sizeHints))));
}

X11WrittenFrame X11PlacingOrder::outcome(const X11Window& window) const {
    const X11PixelRect outer = window.frame().outer();
    Rect kept = outer.toRect().offsetBy(-origin.x, -origin.y);
    if (outer.x == target.x) {
        kept.x = frame.x;
    }
    if (outer.y == target.y) {
        kept.y = frame.y;
    }
    if (outer.width == target.width) {
        kept.width = frame.width;
    }
    if (outer.height == target.height) {
        kept.height = frame.height;
    }
    return {kept, origin, frame.origin(), outer, std::nullopt};
}

X11WrittenFrame X11PlacingOrder::expectation(const X11Window& window) const {
    return {frame, origin, frame.origin(), target, window.frame().outer()};
}

}  // namespace lumatile
