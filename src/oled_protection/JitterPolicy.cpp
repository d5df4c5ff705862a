#include "oled_protection/JitterPolicy.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace lumatile {

namespace {

/// Distance from the border up to which an edge counts as lying on it, pixels. Half a pixel is what
/// rounding to whole pixels can add.
constexpr double borderTolerance = 0.5;

/// One axis of a rectangle.
struct Span {
    double start;   ///< The coordinate as stored, the max edge where `length` is negative.
    double length;  ///< As stored.
    double min;
    double max;
};

Span horizontal(const Rect& rect) { return {rect.x, rect.width, rect.minX(), rect.maxX()}; }
Span vertical(const Rect& rect) { return {rect.y, rect.height, rect.minY(), rect.maxY()}; }

bool isWithinBorder(const Span& frame, const Span& area) {
    return frame.min >= area.min - borderTolerance && frame.max <= area.max + borderTolerance;
}

bool isInner(double edge, double border) { return std::abs(edge - border) > borderTolerance; }

/// Shifts the inner edges of `frame` by `shift` and trims the result to `area`; only `start` and
/// `length` of the result count. Absent when nothing is left.
std::optional<Span> adjusted(const Span& frame, const Span& area, double shift) {
    const bool movesMin = isInner(frame.min, area.min);
    const bool movesMax = isInner(frame.max, area.max);
    const double newMin = movesMin ? frame.min + shift : frame.min;
    const double newMax = movesMax ? frame.max + shift : frame.max;
    const double min = std::max(newMin, area.min);
    const double max = std::min(newMax, area.max);
    if (!(max > min)) {
        return std::nullopt;
    }
    const bool isTrimmed = newMin < area.min || newMax > area.max;
    if (movesMin == movesMax && !isTrimmed) {
        // The difference of two edges can be off in its last bits; a length that nobody changed
        // must not become another one, or a mere move would turn into a resize.
        return Span{movesMin ? frame.start + shift : frame.start, frame.length, min, max};
    }
    return Span{min, max - min, min, max};
}

/// tolerance × (2 · slotBits / 65535 − 1), where the low 16 bits of a product lie in 0 … 65535.
double scaled(double tolerance, std::uint32_t product) {
    const double fraction = 2 * static_cast<double>(product & 0xFFFFU) / 65535 - 1;
    // Adding 0 turns the negative zero of a small negative value into the ordinary one.
    return std::round(tolerance * fraction) + 0.0;
}

}  // namespace

Offset JitterPolicy::offset(double time) const {
    if (!(tolerancePx > 0) || !(stepSeconds > 0) || !std::isfinite(tolerancePx)) {
        return {};
    }
    const double slot = std::trunc(time / stepSeconds);
    if (!std::isfinite(slot)) {
        return {};
    }
    // Only the low 16 bits of the slot number reach the low 16 bits of a product, so the slot never
    // has to fit an integer type. The remainder is exact; a negative one wraps as an integer would.
    const auto low = static_cast<std::int32_t>(std::fmod(slot, 65536));
    const std::uint32_t slotBits = static_cast<std::uint32_t>(low) & 0xFFFFU;
    return {scaled(tolerancePx, slotBits * 31153U), scaled(tolerancePx, slotBits * 40503U)};
}

Rect JitterPolicy::adjust(const Rect& frame, const Rect& area, double time) const {
    const Offset shift = offset(time);
    const Span areaX = horizontal(area);
    const Span areaY = vertical(area);
    if (!isWithinBorder(horizontal(frame), areaX) || !isWithinBorder(vertical(frame), areaY)) {
        return frame.offsetBy(shift.dx, shift.dy);
    }
    const std::optional<Span> x = adjusted(horizontal(frame), areaX, shift.dx);
    const std::optional<Span> y = adjusted(vertical(frame), areaY, shift.dy);
    if (!x || !y) {
        return frame;
    }
    return {x->start, y->start, x->length, y->length};
}

Offset JitterPolicy::edgeShift(const Rect& unadjusted, const Rect& adjusted) {
    const double left = adjusted.minX() - unadjusted.minX();
    const double top = adjusted.minY() - unadjusted.minY();
    return {left != 0 ? left : adjusted.maxX() - unadjusted.maxX(),
            top != 0 ? top : adjusted.maxY() - unadjusted.maxY()};
}

}  // namespace lumatile
