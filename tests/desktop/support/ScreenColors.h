#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// A colour as the screen shows it before gamma, 0 to 255 each.
struct ScreenColor {
    int red = 0;
    int green = 0;
    int blue = 0;

    bool operator==(const ScreenColor&) const = default;

    /// @param rgb as windows state their background: 0xrrggbb
    static ScreenColor of(std::uint32_t rgb);

    /// This colour behind black of that opacity.
    ScreenColor behindBlack(double opacity) const;

    /// Whether no channel is further away.
    bool isNear(const ScreenColor& other, int tolerance) const;
};

std::ostream& operator<<(std::ostream& stream, const ScreenColor& color);

/// Reads what stands on the screen, overlays and the work of compositors included.
class ScreenColors : public XClient {
public:
    using XClient::XClient;

    /// @throws DesktopError for a place that is not on the root window
    ScreenColor at(int x, int y);
};

}  // namespace lumatile::desktop
