#include "displays/ScreenLookup.h"

#include <vector>

#include "displays/PlatformSpace.h"

namespace lumatile {

std::optional<Rect> visibleFrameOfScreenContaining(ScreenList& list, const Point& point) {
    const std::vector<PlatformScreen> screens = list.screens();
    for (const PlatformScreen& screen : screens) {
        const double primaryHeight = screens.front().frame.height;
        if (flippedFromPlatformSpace(screen.frame, primaryHeight).contains(point)) {
            return flippedFromPlatformSpace(screen.visibleFrame, primaryHeight);
        }
    }
    return std::nullopt;
}

}  // namespace lumatile
