#include "platform/x11/X11Struts.h"

#include <algorithm>
#include <array>
#include <limits>

namespace lumatile {

namespace {

constexpr std::size_t plainCount = 4;     // _NET_WM_STRUT: left, right, top, bottom
constexpr std::size_t partialCount = 12;  // _NET_WM_STRUT_PARTIAL: and a first and last for each
constexpr std::size_t numbersOfARect = 4;

X11Strut::Side side(std::span<const std::uint32_t> values, std::size_t index) {
    X11Strut::Side result{static_cast<double>(values[index]),
                          {0, static_cast<double>(std::numeric_limits<std::uint32_t>::max())}};
    if (values.size() == partialCount) {
        result.range = {static_cast<double>(values[plainCount + 2 * index]),
                        static_cast<double>(values[plainCount + 2 * index + 1])};
    }
    return result;
}

/// True when the range holds at least one pixel between `min` and `max` (half-open).
bool touches(const X11Strut::Range& range, double min, double max) {
    return range.first <= range.last && range.first < max && range.last >= min;
}

/// One side of a monitor's free part that may be moved inwards by `cut` pixels.
void cutLow(double& low, double high, double limit) {
    if (limit > low && limit < high) {
        low = limit;
    }
}

void cutHigh(double low, double& high, double limit) {
    if (limit < high && limit > low) {
        high = limit;
    }
}

bool holds(const X11Strut::Side& side, double rootDepth, double min, double max) {
    return side.depth > 0 && side.depth < rootDepth && touches(side.range, min, max);
}

}  // namespace

std::optional<X11Strut> X11Strut::decoded(std::span<const std::uint32_t> values) {
    if (values.size() != plainCount && values.size() != partialCount) {
        return std::nullopt;
    }
    return X11Strut{side(values, 0), side(values, 1), side(values, 2), side(values, 3)};
}

Rect monitorLessStruts(const Rect& monitor, const Size& root, std::span<const X11Strut> struts) {
    double left = monitor.minX();
    double right = monitor.maxX();
    double top = monitor.minY();
    double bottom = monitor.maxY();
    for (const X11Strut& strut : struts) {
        // The ranges are compared with the whole monitor: two panels in one corner both count.
        if (holds(strut.left, root.width, monitor.minY(), monitor.maxY())) {
            cutLow(left, right, strut.left.depth);
        }
        if (holds(strut.right, root.width, monitor.minY(), monitor.maxY())) {
            cutHigh(left, right, root.width - strut.right.depth);
        }
        if (holds(strut.top, root.height, monitor.minX(), monitor.maxX())) {
            cutLow(top, bottom, strut.top.depth);
        }
        if (holds(strut.bottom, root.height, monitor.minX(), monitor.maxX())) {
            cutHigh(top, bottom, root.height - strut.bottom.depth);
        }
    }
    return {left, top, right - left, bottom - top};
}

Rect monitorInWorkArea(const Rect& monitor, const Rect& workArea) {
    const Rect common = monitor.intersection(workArea);
    return common.width > 0 && common.height > 0 ? common : monitor;
}

std::optional<Rect> workAreaOfDesktop(std::span<const std::uint32_t> values,
                                      std::uint32_t desktop) {
    if (values.size() % numbersOfARect != 0 || desktop >= values.size() / numbersOfARect) {
        return std::nullopt;
    }
    const auto area = values.subspan(numbersOfARect * desktop, numbersOfARect);
    return Rect{static_cast<double>(area[0]), static_cast<double>(area[1]),
                static_cast<double>(area[2]), static_cast<double>(area[3])};
}

}  // namespace lumatile
