#include "platform/wayland/LayerPlace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace lumatile {

namespace {

// Coordinates of windows stay far below this; beyond it no arithmetic here is worth anything.
constexpr double farthest = 32767;

// Scales are steps of 1/120: the usual ones come to whole pixels after a few units.
constexpr int longestPeriod = 12;
constexpr double exact = 1e-6;

Rect rounded(const Rect& rect) {
    const double left = std::floor(rect.minX() + 0.5);
    const double top = std::floor(rect.minY() + 0.5);
    return {left, top, std::floor(rect.maxX() + 0.5) - left, std::floor(rect.maxY() + 0.5) - top};
}

/// False for what is not a number, too.
bool isPossible(const Rect& rect) {
    return rect.width >= 1 && rect.height >= 1 && rect.minX() >= -farthest &&
           rect.minY() >= -farthest && rect.maxX() <= farthest && rect.maxY() <= farthest;
}

double area(const Rect& rect) { return rect.width * rect.height; }

/// The screen that contains the midpoint, as windows choose theirs; else the one that shows most.
const WaylandOutput& outputOf(const Rect& rect, std::span<const WaylandOutput> outputs) {
    const WaylandOutput* best = &outputs.front();
    for (const WaylandOutput& output : outputs) {
        if (output.frame.contains(rect.center())) {
            return output;
        }
        if (area(output.frame.intersection(rect)) > area(best->frame.intersection(rect))) {
            best = &output;
        }
    }
    return *best;
}

/// After how many units whole pixels come together with whole units; 1 where that takes too long.
double periodOf(double scale) {
    for (int units = 1; units <= longestPeriod; ++units) {
        const double pixels = units * scale;
        if (std::abs(pixels - std::round(pixels)) < exact) {
            return units;
        }
    }
    return 1;
}

}  // namespace

std::optional<LayerPlace> layerPlace(const Rect& frame, std::span<const WaylandOutput> outputs) {
    const Rect whole = rounded(frame);
    if (outputs.empty() || !isPossible(whole)) {
        return std::nullopt;
    }
    const WaylandOutput& output = outputOf(whole, outputs);
    if (whole.width > 2 * output.frame.width || whole.height > 2 * output.frame.height) {
        return std::nullopt;
    }
    const double period = periodOf(output.scale);
    const auto down = [&](double value) { return std::floor(value / period) * period; };
    const auto up = [&](double value) { return std::ceil(value / period) * period; };
    const Rect local = whole.offsetBy(-output.frame.x, -output.frame.y);
    const double left = down(local.minX());
    const double top = down(local.minY());
    const Rect surface{left, top, up(local.maxX()) - left, up(local.maxY()) - top};
    const auto pixels = [&](double units) {
        return std::max(1, static_cast<int>(std::lround(units * output.scale)));
    };
    return LayerPlace{output, surface, local.offsetBy(-surface.x, -surface.y),
                      pixels(surface.width), pixels(surface.height)};
}

}  // namespace lumatile
