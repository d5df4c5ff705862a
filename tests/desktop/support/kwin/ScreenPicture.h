#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/ScreenColors.h"

namespace lumatile::desktop {

/// What stands on the screens of a private KWin that can take pictures, overlays included.
class ScreenPicture {
public:
    /// Takes it now, of a rectangle of the compositor's space, logical pixels.
    /// @throws DesktopError when KWin does not
    ScreenPicture(const PrivateSession& session, int x, int y, int width, int height);

    int width() const { return width_; }    ///< Device pixels.
    int height() const { return height_; }  ///< Device pixels.

    /// Counted from the picture's own corner, device pixels.
    ScreenColor at(int x, int y) const;

    /// The colour of one place of the compositor's space.
    static ScreenColor colorAt(const PrivateSession& session, int x, int y);

    /// Writes it to a file, PPM, for people to look at.
    void save(const std::string& path) const;

private:
    int width_ = 0;
    int height_ = 0;
    std::size_t stride_ = 0;
    std::vector<std::uint8_t> bytes_;
};

}  // namespace lumatile::desktop
