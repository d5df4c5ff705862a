#pragma once

#include "tests/desktop/support/PixelRect.h"

namespace lumatile::desktop {

/// The frame that shows where a dragged window will land, as it is on the screens of a session.
class SessionHighlight {
public:
    SessionHighlight() = default;
    SessionHighlight(const SessionHighlight&) = delete;
    SessionHighlight& operator=(const SessionHighlight&) = delete;
    virtual ~SessionHighlight() = default;

    virtual bool isShown() = 0;

    /// Waits until it is on the screen, over exactly `wanted`.
    /// @return false when it does not come there
    virtual bool waitUntilAt(const PixelRect& wanted) = 0;
    /// @return false when it stays
    virtual bool waitUntilHidden() = 0;

    /// How often one appeared since the last `forget`.
    virtual int timesShown() = 0;
    virtual void forget() = 0;
};

}  // namespace lumatile::desktop
