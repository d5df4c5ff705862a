#include "tests/desktop/support/ExpectedFrame.h"

#include <cmath>
#include <utility>

#include "geometry/Grid.h"

namespace lumatile::desktop {
namespace {

int rounded(double edge) { return static_cast<int>(std::floor(edge + 0.5)); }

}  // namespace

ExpectedFrame::ExpectedFrame(MonitorLayout layout)
    : layout_(std::move(layout)), reserved_(layout_.monitors.size()) {}

void ExpectedFrame::reserve(std::size_t monitor, int height) { reserved_.at(monitor) = height; }

PixelRect ExpectedFrame::visible(std::size_t monitor) const {
    PixelRect frame = layout_.monitors.at(monitor);
    frame.height -= reserved_.at(monitor);
    return frame;
}

Rect ExpectedFrame::unroundedArea(const DefaultShortcut& shortcut, std::size_t monitor) const {
    const Rect frame = fromRoot(visible(monitor));
    return frame.width < frame.height
               ? Grid::rect(shortcut.portrait, frame, Orientation::vertical)
               : Grid::rect(shortcut.landscape, frame, Orientation::horizontal);
}

PixelRect ExpectedFrame::area(const DefaultShortcut& shortcut, std::size_t monitor) const {
    return toRoot(unroundedArea(shortcut, monitor));
}

PixelRect ExpectedFrame::centered(const PixelRect& window, std::size_t monitor) const {
    return toRoot(Grid::centered(fromRoot(window).size(), fromRoot(visible(monitor))));
}

PixelRect ExpectedFrame::moved(const PixelRect& window, std::size_t from, std::size_t to) const {
    return toRoot(
        Grid::transferred(fromRoot(window), fromRoot(visible(from)), fromRoot(visible(to))));
}

Rect ExpectedFrame::fromRoot(const PixelRect& rect) const {
    const PixelRect& primary = layout_.primaryMonitor();
    return {static_cast<double>(rect.x - primary.x), static_cast<double>(rect.y - primary.y),
            static_cast<double>(rect.width), static_cast<double>(rect.height)};
}

PixelRect ExpectedFrame::toRoot(const Rect& rect) const {
    const PixelRect& primary = layout_.primaryMonitor();
    const int left = rounded(rect.minX());
    const int top = rounded(rect.minY());
    return {left + primary.x, top + primary.y, rounded(rect.maxX()) - left,
            rounded(rect.maxY()) - top};
}

}  // namespace lumatile::desktop
