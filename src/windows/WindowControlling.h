#pragma once

#include <optional>

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "windows/AXElementKey.h"
#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// One window that can be identified, read and moved. Frames are in the accessibility space.
class WindowControlling {
public:
    virtual ~WindowControlling() = default;

    virtual AXElementKey key() const = 0;

    /// The current frame; absent when position or size cannot be read.
    virtual std::optional<Rect> frame() const = 0;

    /// Moves and resizes. Failures are silent: whoever needs the outcome reads `frame` again.
    virtual void setFrame(const Rect& frame) = 0;

    /// Moves without touching the size, in a single write.
    virtual void setPosition(const Point& position) = 0;

    /// The owning process; absent when it cannot be read.
    virtual std::optional<Pid> pid() const = 0;

    /// Whether this still is a window: its role can be read and says so.
    virtual bool isWindow() const = 0;
};

}  // namespace lumatile
