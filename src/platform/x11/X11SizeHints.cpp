#include "platform/x11/X11SizeHints.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace lumatile {

namespace {

// The property's flags and the places of its items, as the window manager conventions have them.
constexpr std::uint32_t hasMinimum = 1U << 4U;
constexpr std::uint32_t hasMaximum = 1U << 5U;
constexpr std::uint32_t hasSteps = 1U << 6U;
constexpr std::uint32_t hasAspect = 1U << 7U;
constexpr std::uint32_t hasBase = 1U << 8U;
constexpr std::size_t minimumAt = 5;
constexpr std::size_t maximumAt = 7;
constexpr std::size_t stepsAt = 9;
constexpr std::size_t aspectAt = 11;
constexpr std::size_t baseAt = 15;
constexpr std::size_t itemsWithoutBase = 15;  // Older programs leave base and gravity out.
constexpr std::size_t itemsWithBase = 17;

int bounded(std::uint32_t item, int least) {
    return std::clamp(std::bit_cast<std::int32_t>(item), least, X11SizeHints::unlimited);
}

int stepped(int value, int minimum, int base, int step) {
    if (step <= 1 || value < base) {
        return value;
    }
    const int result = base + (value - base) / step * step;
    return result < minimum ? result + step : result;
}

}  // namespace

X11PixelRect X11SizeHints::constrained(const X11PixelRect& client) const {
    int width = std::max(minimumWidth, std::min(client.width, maximumWidth));
    int height = std::max(minimumHeight, std::min(client.height, maximumHeight));

    const int freeWidth = aspectLessBase ? baseWidth : 0;
    const int freeHeight = aspectLessBase ? baseHeight : 0;
    // 64 bits: the product of two sizes.
    const std::int64_t ratioWidth = width - freeWidth;
    const std::int64_t ratioHeight = height - freeHeight;
    if (ratioWidth > 0 && ratioHeight > 0) {
        if (maximumAspect.height > 0 &&
            ratioWidth * maximumAspect.height > ratioHeight * maximumAspect.width) {
            width = freeWidth +
                    static_cast<int>(ratioHeight * maximumAspect.width / maximumAspect.height);
        } else if (minimumAspect.width > 0 &&
                   ratioWidth * minimumAspect.height < ratioHeight * minimumAspect.width) {
            height = freeHeight +
                     static_cast<int>(ratioWidth * minimumAspect.height / minimumAspect.width);
        }
    }
    return {client.x, client.y,
            std::max({1, minimumWidth, stepped(width, minimumWidth, baseWidth, stepWidth)}),
            std::max({1, minimumHeight, stepped(height, minimumHeight, baseHeight, stepHeight)})};
}

X11SizeHints X11SizeHints::decode(std::span<const std::uint32_t> items) {
    X11SizeHints hints;
    if (items.size() < itemsWithoutBase) {
        return hints;
    }
    const std::uint32_t flags = items[0];
    const bool base = (flags & hasBase) != 0 && items.size() >= itemsWithBase;
    const bool minimum = (flags & hasMinimum) != 0;
    if (base) {
        hints.baseWidth = bounded(items[baseAt], 0);
        hints.baseHeight = bounded(items[baseAt + 1], 0);
    }
    if (minimum) {
        hints.minimumWidth = bounded(items[minimumAt], 1);
        hints.minimumHeight = bounded(items[minimumAt + 1], 1);
    }
    // Each stands in for the other where only one is given.
    if (minimum && !base) {
        hints.baseWidth = hints.minimumWidth;
        hints.baseHeight = hints.minimumHeight;
    } else if (base && !minimum) {
        hints.minimumWidth = std::max(1, hints.baseWidth);
        hints.minimumHeight = std::max(1, hints.baseHeight);
    }
    if ((flags & hasMaximum) != 0) {
        hints.maximumWidth = bounded(items[maximumAt], 1);
        hints.maximumHeight = bounded(items[maximumAt + 1], 1);
    }
    if ((flags & hasSteps) != 0) {
        hints.stepWidth = bounded(items[stepsAt], 1);
        hints.stepHeight = bounded(items[stepsAt + 1], 1);
    }
    if ((flags & hasAspect) != 0) {
        hints.minimumAspect = {bounded(items[aspectAt], 0), bounded(items[aspectAt + 1], 0)};
        hints.maximumAspect = {bounded(items[aspectAt + 2], 0), bounded(items[aspectAt + 3], 0)};
        hints.aspectLessBase = base;
    }
    return hints;
}

}  // namespace lumatile
