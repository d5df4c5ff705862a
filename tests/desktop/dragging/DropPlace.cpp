#include "tests/desktop/dragging/DropPlace.h"

namespace lumatile::desktop {

std::vector<DropPlace> dropPlaces(const PixelRect& visible) {
    // Near enough to an edge, and not on its outermost pixel, which belongs to hot corners.
    constexpr int inset = 2;
    // Within the corner's cell, which is 45 pixels wide and high at least.
    constexpr int corner = 20;
    const int left = visible.x + inset;
    const int right = visible.right() - 1 - inset;
    const int top = visible.y + inset;
    const int bottom = visible.bottom() - 1 - inset;
    const int middle = visible.x + visible.width / 2;
    const int center = visible.y + visible.height / 2;
    std::vector<DropPlace> places{
        {"left", left, center},
        {"topLeft", left, visible.y + corner},
        {"bottomLeft", left, visible.bottom() - corner},
        {"maximize", middle, top},
        {"right", right, center},
        {"topRight", right, visible.y + corner},
        {"bottomRight", right, visible.bottom() - corner},
    };
    if (visible.width < visible.height) {
        places.push_back({"bottom", middle, bottom});
    } else {
        places.push_back({"leftThird", visible.x + visible.width / 6, bottom});
        places.push_back({"centerThird", middle, bottom});
        places.push_back({"rightThird", visible.right() - visible.width / 6, bottom});
    }
    return places;
}

}  // namespace lumatile::desktop
