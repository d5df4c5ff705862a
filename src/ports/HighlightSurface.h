#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "geometry/Rect.h"

namespace lumatile {

/// Port: one picture above everything, where windows of the toolkit cannot be. Clicks go through
/// it, it is in no list of windows and never has the focus.
class HighlightSurface {
public:
    /// What a picture is drawn into.
    struct Canvas {
        std::span<std::uint32_t> pixels;  ///< Row by row, clear; premultiplied, alpha uppermost.
        int width = 0;                    ///< Pixels of the screen.
        int height = 0;
        double scale = 1;  ///< Pixels for each unit of the accessibility space.
        Rect panel;        ///< Where the frame lies on it, in units from its upper left corner.
    };
    using Draw = std::function<void(const Canvas&)>;

    virtual ~HighlightSurface() = default;

    /// Whether there can be such a picture now. Nothing else works where there cannot.
    virtual bool isAvailable() = 0;

    /// Has a picture drawn for a frame and shows it there, in the opacity that was set last, in
    /// place of the one before.
    /// @param frame accessibility space; rounded to where a window placed there would lie
    /// @param draw called at most once, now or when the window system is ready for another picture,
    ///        but not after `hide`
    /// @return false, and nothing is shown, for a frame that no window could have
    virtual bool show(const Rect& frame, const Draw& draw) = 0;

    /// @param opacity of the picture, from 0 (not to be seen) to 1 (as it was drawn)
    virtual void setOpacity(double opacity) = 0;

    virtual void hide() = 0;

    /// Hides it and gives back the memory of pictures, which is kept for the next one otherwise.
    virtual void release() = 0;
};

}  // namespace lumatile
