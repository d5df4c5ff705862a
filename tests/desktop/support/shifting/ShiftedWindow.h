#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/desktop/support/PixelRect.h"

namespace lumatile::desktop {

/// A window that the protection moves or leaves alone, on the desktop of a session. Rectangles are
/// those of the outer frame, in the space of the session's monitors.
class ShiftedWindow {
public:
    ShiftedWindow() = default;
    ShiftedWindow(const ShiftedWindow&) = delete;
    ShiftedWindow& operator=(const ShiftedWindow&) = delete;
    virtual ~ShiftedWindow() = default;

    /// At this moment, as somebody else on the desktop sees it.
    /// @throws DesktopError when the window is gone
    virtual PixelRect frame() = 0;

    /// Puts it there, as a user does, and waits for it.
    virtual void place(const PixelRect& wanted) = 0;

    virtual void activate() = 0;

    /// Sends it to a virtual desktop, counted from 0, and waits for that.
    virtual void sendToDesktop(int desktop) = 0;

    /// What a user would notice of it apart from where it is; a shift changes nothing of it.
    virtual std::string condition() = 0;

    /// How often the program has asked for a place since `ShiftingDesk::forget`.
    virtual std::size_t timesAsked() = 0;

    /// What else the program has asked about it since then: anything but a place of the same size.
    virtual std::vector<std::string> otherThanMoves() = 0;

    /// The geometries that it went through since `forgetGeometries`: of its frame, or of what is in
    /// the frame.
    virtual std::vector<PixelRect> geometries() = 0;
    virtual void forgetGeometries() = 0;
};

}  // namespace lumatile::desktop
