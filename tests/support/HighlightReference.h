#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "geometry/Size.h"

/// The highlight's eight steps once more, pixel by pixel, from nothing but their numbers.
namespace lumatile::reference {

struct Place {
    double x = 0, y = 0;
};

struct Box {
    double left = 0, top = 0, right = 0, bottom = 0;

    Box inset(double by) const { return {left + by, top + by, right - by, bottom - by}; }

    /// Whether the box, with round corners, holds the place.
    bool holds(const Place& place, double radius) const {
        if (place.x < left || place.x >= right || place.y < top || place.y >= bottom) {
            return false;
        }
        radius = std::min({radius, (right - left) / 2, (bottom - top) / 2});
        const double x = std::max({left + radius - place.x, place.x - (right - radius), 0.0});
        const double y = std::max({top + radius - place.y, place.y - (bottom - radius), 0.0});
        return x * x + y * y <= radius * radius;
    }
};

using Color = std::array<double, 3>;  // Red, green, blue; 0 to 255.

constexpr Color black{0, 0, 0};
constexpr Color tint{239, 235, 227};
constexpr Color accent{255, 91, 31};

/// A panel laid into `bounds`, in points.
struct Drawing {
    Box bounds{};
    Size pitch;

    Box panel() const { return bounds.inset(3); }
    bool inPanel(const Place& place) const { return panel().holds(place, 8); }

    /// A mark is a square of half the shorter side, in the middle of its cell; the cells begin
    /// where the place does.
    bool inMark(const Place& place) const {
        const double side = std::min(pitch.width, pitch.height) / 2;
        const double x = std::fmod(place.x - bounds.left, pitch.width) - pitch.width / 2;
        const double y = std::fmod(place.y - bounds.top, pitch.height) - pitch.height / 2;
        return Box{-side / 2, -side / 2, side / 2, side / 2}.holds({x, y}, 4);
    }
    bool inBand(const Place& place) const { return place.y < panel().top + 6; }
    bool inOutline(const Place& place) const {
        return panel().inset(-1).holds(place, 9) && !panel().inset(1).holds(place, 7);
    }

    /// How much of a pixel each of the shapes covers.
    struct Coverage {
        double panel = 0, mark = 0, band = 0, outline = 0;
        bool isEdge = false;  ///< Some shape ends in the pixel or next to it.

        bool operator==(const Coverage&) const = default;
    };

    Coverage at(const Place& place) const {
        const bool inside = inPanel(place);
        return {inside ? 1.0 : 0.0, inside && inMark(place) ? 1.0 : 0.0,
                inside && inBand(place) ? 1.0 : 0.0, inOutline(place) ? 1.0 : 0.0};
    }

    Coverage coverage(int x, int y, double scale) const {
        const auto in = [&](double dx, double dy) {
            return at({(x + dx) / scale, (y + dy) / scale});
        };
        // No shape is narrower than these points are apart.
        const Coverage middle = in(0.5, 0.5);
        if (middle == in(-0.2, -0.2) && middle == in(1.2, -0.2) && middle == in(-0.2, 1.2) &&
            middle == in(1.2, 1.2)) {
            return middle;
        }
        constexpr int samples = 16;
        constexpr double share = 1.0 / (samples * samples);
        Coverage result;
        result.isEdge = true;
        for (int i = 0; i < samples; ++i) {
            for (int j = 0; j < samples; ++j) {
                const Coverage sample = in((i + 0.5) / samples, (j + 0.5) / samples);
                result.panel += sample.panel * share;
                result.mark += sample.mark * share;
                result.band += sample.band * share;
                result.outline += sample.outline * share;
            }
        }
        return result;
    }

    static Color over(const Color& color, double alpha, const Color& below) {
        Color result{};
        for (std::size_t i = 0; i < result.size(); ++i) {
            result[i] = color[i] * alpha + below[i] * (1 - alpha);
        }
        return result;
    }

    static Color color(const Coverage& covered, Color below) {
        below = over(black, 0.45 * covered.panel, below);
        below = over(tint, 0.07 * covered.panel, below);
        below = over(tint, 0.14 * covered.mark, below);
        below = over(accent, covered.band, below);
        return over(tint, 0.9 * covered.outline, below);
    }
};

}  // namespace lumatile::reference
