#include "displays/NSScreenProvider.h"

#include "displays/PlatformSpace.h"

namespace lumatile {

std::vector<Rect> NSScreenProvider::screens() const {
    std::vector<Rect> result;
    const std::vector<PlatformScreen> screens = list_.screens();
    result.reserve(screens.size());
    for (const PlatformScreen& screen : screens) {
        result.push_back(
            flippedFromPlatformSpace(screen.visibleFrame, screens.front().frame.height));
    }
    return result;
}

std::optional<Rect> NSScreenProvider::visibleFrameAt(const Point& point) const {
    const std::vector<Rect> frames = screens();
    for (const Rect& frame : frames) {
        if (frame.contains(point)) {
            return frame;
        }
    }
    return frames.empty() ? std::nullopt : std::optional(frames.front());
}

}  // namespace lumatile
