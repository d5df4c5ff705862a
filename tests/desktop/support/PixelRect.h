#pragma once

#include <iosfwd>
#include <string>

namespace lumatile::desktop {

/// A rectangle in whole pixels, in the coordinates of the root window.
struct PixelRect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const PixelRect&) const = default;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
};

/// "1920x1080+0+0"
std::string toString(const PixelRect& rect);
std::ostream& operator<<(std::ostream& stream, const PixelRect& rect);

}  // namespace lumatile::desktop
