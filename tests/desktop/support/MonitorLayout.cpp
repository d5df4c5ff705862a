#include "tests/desktop/support/MonitorLayout.h"

#include <algorithm>

namespace lumatile::desktop {

PixelRect MonitorLayout::root() const {
    PixelRect size;
    for (const PixelRect& monitor : monitors) {
        size.width = std::max(size.width, monitor.right());
        size.height = std::max(size.height, monitor.bottom());
    }
    return size;
}

MonitorLayout MonitorLayout::landscape() { return {"landscape", {{0, 0, 1920, 1080}}, 0}; }

MonitorLayout MonitorLayout::smallLandscape() { return {"smallLandscape", {{0, 0, 1366, 768}}, 0}; }

MonitorLayout MonitorLayout::portrait() { return {"portrait", {{0, 0, 1080, 1920}}, 0}; }

MonitorLayout MonitorLayout::landscapeAndPortrait() {
    return {"landscapeAndPortrait", {{0, 0, 1920, 1080}, {1920, 0, 1080, 1920}}, 0};
}

MonitorLayout MonitorLayout::scaledLandscapeAndPortrait() {
    return {"scaledLandscapeAndPortrait", {{0, 0, 1280, 720}, {1280, 0, 1080, 1920}}, 0, {1.5, 1}};
}

MonitorLayout MonitorLayout::portraitAndPrimaryLandscape() {
    return {"portraitAndPrimaryLandscape", {{0, 0, 1080, 1920}, {1080, 300, 1920, 1080}}, 1};
}

}  // namespace lumatile::desktop
