#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tests/desktop/support/PixelRect.h"
#include "tests/desktop/support/session/SpecialState.h"

namespace lumatile::desktop {

/// A window on the desktop of a session. Rectangles are those of the outer frame, as a user sees
/// it, in the space of the session's monitors.
class SessionWindow {
public:
    SessionWindow() = default;
    SessionWindow(const SessionWindow&) = delete;
    SessionWindow& operator=(const SessionWindow&) = delete;
    virtual ~SessionWindow() = default;

    /// Where it is, fractions cut off.
    /// @throws DesktopError when the window is gone
    virtual PixelRect frame() = 0;

    /// Whether it lies just there, or as near as the window's own steps of size allow.
    virtual bool isAt(const PixelRect& wanted) = 0;

    /// Whether a window of this kind that is asked to come to `wanted` may come to be at `frame`.
    virtual bool mayBecome(const PixelRect& frame, const PixelRect& wanted) const {
        return frame == wanted;
    }

    /// Whether its size changes in steps.
    virtual bool hasSteps() const { return false; }

    /// Puts it there, active or not, and waits for it.
    virtual void place(const PixelRect& wanted) = 0;

    virtual void activate() = 0;
    virtual bool isActive() = 0;

    /// Asks for the focus and does not wait: whether a window takes it may be up to the desktop.
    virtual void askForFocus() = 0;

    /// Gets it into a state, as a user does, and waits for it.
    /// @throws DesktopError when it does not get there, or the desktop has no such state
    virtual void enter(SpecialState state) = 0;
    virtual bool isIn(SpecialState state) = 0;

    /// The frame that the program has asked for since `SessionDesk::forget`; fields that it did not
    /// name are those of `before`.
    /// @return absent when nothing was asked
    virtual std::optional<PixelRect> asked(const PixelRect& before) = 0;

    /// How often the program has asked for a frame since `SessionDesk::forget`.
    virtual std::size_t timesAsked() = 0;

    /// What else the program has asked about it since then: anything but a place and
    /// the focus.
    virtual std::vector<std::string> otherThanPlaces() = 0;

    /// The different frames that a user saw it take since `forgetFrames`, the first of them where
    /// it was.
    virtual std::vector<PixelRect> frames() = 0;
    /// The different sizes since then of what the program draws into, as rectangles at 0, 0.
    virtual std::vector<PixelRect> sizes() = 0;
    virtual void forgetFrames() = 0;
};

}  // namespace lumatile::desktop
