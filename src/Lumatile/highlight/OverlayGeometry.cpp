#include "Lumatile/highlight/OverlayGeometry.h"

#include <cmath>

namespace lumatile {

namespace {

// Positions are signed 16-bit numbers on the window system's side.
constexpr double farthest = 32767;

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

Rect pixelsOf(const ToolkitScreen& screen) {
    return {screen.frame.x, screen.frame.y, std::round(screen.frame.width * screen.scale),
            std::round(screen.frame.height * screen.scale)};
}

double area(const Rect& rect) { return rect.width * rect.height; }

/// The screen that contains the midpoint, as windows choose theirs; else the one that shows most.
std::size_t screenOf(const Rect& root, std::span<const ToolkitScreen> screens) {
    std::size_t best = 0;
    for (std::size_t i = 0; i < screens.size(); ++i) {
        const Rect pixels = pixelsOf(screens[i]);
        if (pixels.contains(root.center())) {
            return i;
        }
        if (area(pixels.intersection(root)) > area(pixelsOf(screens[best]).intersection(root))) {
            best = i;
        }
    }
    return best;
}

/// One dimension.
struct Span {
    double start = 0;   ///< Points from the screen's origin.
    double length = 0;  ///< Points.
    double inset = 0;   ///< Points from the start to the first pixel.
};

/// The points that hold the pixels from `first` on. The toolkit rounds start and length to pixels
/// each, halves away from zero.
/// @param first pixels from the screen's origin
Span spanOf(double first, double count, double scale) {
    const double start = std::floor(first / scale);
    const double startPixel = std::round(start * scale);
    return {start, std::ceil((first + count - startPixel) / scale), (first - startPixel) / scale};
}

}  // namespace

std::optional<OverlayPlace> overlayPlace(const Rect& frame,
                                         std::span<const ToolkitScreen> screens) {
    if (screens.empty()) {
        return std::nullopt;
    }
    const Rect& primary = screens.front().frame;
    const Rect root = rounded(frame).offsetBy(primary.x, primary.y);
    if (!isPossible(root)) {
        return std::nullopt;
    }
    const std::size_t index = screenOf(root, screens);
    const auto& [screen, scale] = screens[index];
    const Span across = spanOf(root.x - screen.x, root.width, scale);
    const Span down = spanOf(root.y - screen.y, root.height, scale);
    return OverlayPlace{
        index,
        {screen.x + across.start, screen.y + down.start, across.length, down.length},
        {across.inset, down.inset, root.width / scale, root.height / scale}};
}

}  // namespace lumatile
