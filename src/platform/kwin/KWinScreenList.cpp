#include "platform/kwin/KWinScreenList.h"

#include <algorithm>
#include <utility>

namespace lumatile {

namespace {

/// From KWin's space to the platform's: bottom-left corner of the primary screen, y upwards.
Rect inPlatformSpace(const Rect& rect, const Rect& primary) {
    return {rect.x - primary.x, primary.maxY() - rect.maxY(), rect.width, rect.height};
}

}  // namespace

KWinScreenList::KWinScreenList(KWinChannel& channel, Primary primary)
    : channel_(channel), primary_(std::move(primary)) {}

std::vector<KWinScreen> KWinScreenList::inOrder(const KWinMirror& mirror) {
    std::vector<KWinScreen> screens = mirror.screens();
    if (const std::optional<Rect> primary = primary_()) {
        const auto first =
            std::find_if(screens.begin(), screens.end(),
                         [&primary](const KWinScreen& screen) { return screen.frame == *primary; });
        if (first != screens.end()) {
            std::rotate(screens.begin(), first, first + 1);
        }
    }
    return screens;
}

std::vector<PlatformScreen> KWinScreenList::screens() {
    const std::vector<KWinScreen> screens = inOrder(channel_.mirror());
    std::vector<PlatformScreen> result;
    result.reserve(screens.size());
    for (const KWinScreen& screen : screens) {
        const Rect& primary = screens.front().frame;
        result.push_back(
            {inPlatformSpace(screen.frame, primary), inPlatformSpace(screen.area, primary)});
    }
    return result;
}

Point KWinScreenList::origin() {
    // Asked in the midst of work on a window, which must not go meanwhile.
    const std::vector<KWinScreen> screens = inOrder(channel_.mirrorSoFar());
    return screens.empty() ? Point{} : screens.front().frame.origin();
}

}  // namespace lumatile
