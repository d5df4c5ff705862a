#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "geometry/Point.h"

namespace lumatile {

/// What a tap tells. The values are the bits of a tap's mask.
enum class MouseEventType : std::uint8_t {
    leftMouseDown = 1,
    leftMouseUp = 2,
    leftMouseDragged = 6,  ///< A movement while the left button is down.
    tapDisabled = 14       ///< The window system took the tap away; told whatever the mask.
};

struct MouseEvent {
    MouseEventType type = MouseEventType::leftMouseDown;
    Point location;  ///< Accessibility space; of no meaning for a disabled tap.
};

/// A place from which the user's mouse is watched. It never delays, changes or takes an event.
/// Destroying it ends the watching.
class MouseTap {
public:
    MouseTap() = default;
    MouseTap(const MouseTap&) = delete;
    MouseTap& operator=(const MouseTap&) = delete;
    virtual ~MouseTap() = default;

    /// Starts the watching, also anew after it has been disabled.
    virtual void enable() = 0;
};

/// Port: watching the mouse over all windows.
class MouseEventSource {
public:
    using Mask = std::uint64_t;
    using Handler = std::function<void(const MouseEvent&)>;

    static constexpr Mask bit(MouseEventType type) {
        return Mask{1} << static_cast<std::uint8_t>(type);
    }

    virtual ~MouseEventSource() = default;

    /// @param mask the events to be told of
    /// @param handler called from the run loop, in the order of the events; movements that come
    ///        faster than they can be told may be told as one, presses and releases never
    /// @return null when the mouse cannot be watched; not enabled yet
    virtual std::unique_ptr<MouseTap> createTap(Mask mask, Handler handler) = 0;

    /// Says whether windows that are dropped at an edge of the screen are placed by this program
    /// now. A desktop that would do so itself, and can be told for the time being, leaves it until
    /// it is told otherwise or the program ends.
    virtual void setTakesDrops(bool /*takesDrops*/) {}
};

}  // namespace lumatile
