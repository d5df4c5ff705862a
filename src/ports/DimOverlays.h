#pragma once

namespace lumatile {

/// Port: black over every screen, panels and full-screen windows included. Clicks, scrolls and keys
/// go through it to what is below; it is in no list of windows and never has the focus.
class DimOverlays {
public:
    virtual ~DimOverlays() = default;

    /// Makes the overlays anew, one for each screen that there is now, wholly transparent and in
    /// front. None where there are no screens.
    virtual void rebuild() = 0;

    /// Gives every overlay this opacity at once, from 0 (clear) to 1 (black), and where it is not
    /// clear brings it to the front again. Screens that were plugged in since may stay bright.
    virtual void setOpacity(double opacity) = 0;
};

}  // namespace lumatile
