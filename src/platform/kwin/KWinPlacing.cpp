#include "platform/kwin/KWinPlacing.h"

#include "platform/kwin/KWinReport.h"
#include "platform/windows/RoundedEdges.h"

namespace lumatile {

Rect KWinPlacing::frameOf(const KWinWindow& window) {
    return window.written && window.written->became == window.record.frame ? window.written->frame
                                                                           : window.record.frame;
}

std::optional<KWinPlacing> KWinPlacing::plan(const KWinWindow& window, const PlacingWish& wish,
                                             const Point& origin) {
    const KWinWindowRecord& record = window.record;
    if (record.isFullScreen || !record.isMovable || (record.isShaded && !wish.size) ||
        wish.isEmpty()) {
        return std::nullopt;
    }
    KWinPlacing placing;
    const Rect now = frameOf(window);
    placing.frame = now;
    if (wish.position) {
        placing.frame.x = wish.position->x + origin.x;
        placing.frame.y = wish.position->y + origin.y;
    }
    placing.withSize = wish.size.has_value();
    if (wish.size) {
        placing.frame.width = wish.size->width;
        placing.frame.height = wish.size->height;
        const auto target = roundedEdges(placing.frame, KWinReport::farthest);
        if (!target) {
            return std::nullopt;
        }
        placing.target = *target;
    } else {
        // A window that is only moved keeps its size, whatever the fractions.
        const auto left = roundedEdge(placing.frame.x, KWinReport::farthest);
        const auto top = roundedEdge(placing.frame.y, KWinReport::farthest);
        if (!left || !top) {
            return std::nullopt;
        }
        placing.target = {*left, *top, record.frame.width, record.frame.height};
    }
    placing.isSo = record.frame == placing.target && !record.isMaximized && !record.isTiled &&
                   !record.isShaded;
    return placing;
}

KWinPlaceOrder KWinPlacing::order(const KWinWindow& window) const {
    KWinPlaceOrder order{window.record.id, target.x, target.y, std::nullopt, std::nullopt};
    if (withSize) {
        order.width = target.width;
        order.height = target.height;
    }
    return order;
}

KWinWrittenFrame KWinPlacing::outcome(const KWinWindow& window) const {
    const Rect& became = window.record.frame;
    const auto met = [](double asked, double wanted, double is) {
        return wanted == is ? asked : is;
    };
    return {{met(frame.x, target.x, became.x), met(frame.y, target.y, became.y),
             met(frame.width, target.width, became.width),
             met(frame.height, target.height, became.height)},
            became};
}

}  // namespace lumatile
