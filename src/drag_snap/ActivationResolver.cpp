#include "drag_snap/ActivationResolver.h"

#include <cstdint>
#include <limits>

#include "geometry/Grid.h"

namespace lumatile {

namespace {

/// A stored list may hold any integers, and no stored value may stop the program: what does not fit
/// is as large as can be, either way.
std::int64_t cappedProduct(std::int64_t a, std::int64_t b) {
    std::int64_t product = 0;
    if (__builtin_mul_overflow(a, b, &product)) {
        return (a < 0) == (b < 0) ? std::numeric_limits<std::int64_t>::max()
                                  : std::numeric_limits<std::int64_t>::min();
    }
    return product;
}

std::int64_t cappedSum(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        return a > 0 ? std::numeric_limits<std::int64_t>::max()
                     : std::numeric_limits<std::int64_t>::min();
    }
    return sum;
}

std::int64_t targetSize(const SnapCommand& command) {
    std::int64_t size = 0;
    for (const Segment& segment : command.targetSegments) {
        if (const std::optional<CellRect> cells = cellRect(segment)) {
            size = cappedSum(size, cappedProduct(cells->w, cells->h));
        }
    }
    return size;
}

bool isActivatedAt(const SnapCommand& command, const Point& point, const Rect& screen,
                   Orientation orientation) {
    for (const Segment& segment : command.activationSegments) {
        const std::optional<CellRect> cells = cellRect(segment);
        if (cells && Grid::rect(*cells, screen, orientation).contains(point)) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<SnapCommand> ActivationResolver::resolve(
    const Point& point, const Rect& screen, Orientation orientation,
    const std::vector<SnapCommand>& commands) const {
    const SnapCommand* best = nullptr;
    std::int64_t bestSize = 0;
    for (const SnapCommand& command : commands) {
        if (command.kind != Kind::area || command.axis != orientation ||
            !isActivatedAt(command, point, screen, orientation)) {
            continue;
        }
        const std::int64_t size = targetSize(command);
        if (best == nullptr || size < bestSize) {
            best = &command;
            bestSize = size;
        }
    }
    return best != nullptr ? std::optional(*best) : std::nullopt;
}

}  // namespace lumatile
