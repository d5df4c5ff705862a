#include "displays/DisplayService.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "geometry/Grid.h"

namespace lumatile {

Rect DisplayService::frameOnNeighbour(const Rect& frame, int step) const {
    const std::vector<Rect> frames = screens->screens();
    if (frames.size() < 2) {
        return frame;
    }
    const std::optional<Rect> source = screens->visibleFrameAt(frame.center());
    if (!source) {
        return frame;
    }
    const auto found = std::find(frames.begin(), frames.end(), *source);
    if (found == frames.end()) {
        return frame;
    }
    const auto count = static_cast<std::ptrdiff_t>(frames.size());
    const std::ptrdiff_t index = found - frames.begin();
    const std::ptrdiff_t target = ((index + step) % count + count) % count;
    return Grid::transferred(frame, *source, frames[static_cast<std::size_t>(target)]);
}

}  // namespace lumatile
