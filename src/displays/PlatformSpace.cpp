#include "displays/PlatformSpace.h"

namespace lumatile {

Rect flippedFromPlatformSpace(const Rect& rect, double primaryHeight) {
    return {rect.minX(), primaryHeight - rect.maxY(), rect.width, rect.height};
}

}  // namespace lumatile
