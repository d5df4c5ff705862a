#include "tests/desktop/support/PixelRect.h"

#include <ostream>

namespace lumatile::desktop {
namespace {

std::string withSign(int value) { return (value < 0 ? "" : "+") + std::to_string(value); }

}  // namespace

std::string toString(const PixelRect& rect) {
    return std::to_string(rect.width) + "x" + std::to_string(rect.height) + withSign(rect.x) +
           withSign(rect.y);
}

std::ostream& operator<<(std::ostream& stream, const PixelRect& rect) {
    return stream << toString(rect);
}

}  // namespace lumatile::desktop
