#include "platform/simulated/SimulatedWindow.h"

#include <cmath>

namespace lumatile {

Rect SimulatedGeometry::current() const { return rounded(asked) == pixels ? asked : pixels; }

Rect SimulatedGeometry::rounded(const Rect& rect) {
    const double left = std::floor(rect.minX() + 0.5);
    const double top = std::floor(rect.minY() + 0.5);
    return {left, top, std::floor(rect.maxX() + 0.5) - left, std::floor(rect.maxY() + 0.5) - top};
}

bool SimulatedWindow::isStandard() const {
    return traits.role == AttributeName::windowRole &&
           traits.subrole == AttributeName::standardWindowSubrole;
}

}  // namespace lumatile
