#pragma once

#include <memory>

#include "displays/ScreenProviding.h"
#include "geometry/Rect.h"

namespace lumatile {

/// The screens, and the frame that a window gets on the next one.
struct DisplayService {
    std::shared_ptr<const ScreenProviding> screens;

    /// The frame that `frame` takes on a neighbouring screen, at the same relative place and size.
    /// Screens follow one another in the platform's order and wrap round at both ends; a frame
    /// whose centre is on no visible frame counts as being on the first screen.
    /// @param step +1 for the next screen, −1 for the previous one
    /// @return `frame` itself where there is no other screen
    Rect frameOnNeighbour(const Rect& frame, int step) const;
};

}  // namespace lumatile
