#include "displays/ScreenLookup.h"

#include "displays/PlatformSpace.h"

namespace lumatile {

std::optional<Rect> visibleFrameOfScreenContaining(std::span<const PlatformScreen> screens,
                                                   const Point& point) {
    for (const PlatformScreen& screen : screens) {
        const double primaryHeight = screens.front().frame.height;
        if (flippedFromPlatformSpace(screen.frame, primaryHeight).contains(point)) {
            return flippedFromPlatformSpace(screen.visibleFrame, primaryHeight);
        }
    }
    return std::nullopt;
}

std::optional<Rect> visibleFrameOfScreenContaining(ScreenList& list, const Point& point) {
    return visibleFrameOfScreenContaining(list.screens(), point);
}

}  // namespace lumatile
