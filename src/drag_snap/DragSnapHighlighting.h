#pragma once

#include "geometry/Rect.h"

namespace lumatile {

/// Port: the highlight of where a dragged window would land.
class DragSnapHighlighting {
public:
    virtual ~DragSnapHighlighting() = default;

    /// Shows the place, or moves what is shown already there.
    /// @param frame accessibility space
    virtual void show(const Rect& frame) = 0;

    /// Nothing happens when nothing is shown.
    virtual void hide() = 0;
};

}  // namespace lumatile
