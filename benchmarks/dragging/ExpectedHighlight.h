#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "commands/SnapCommand.h"
#include "drag_snap/DragSnapController.h"
#include "drag_snap/DragSnapHighlighting.h"
#include "geometry/Point.h"
#include "geometry/Rect.h"

namespace lumatile::benchmark {

/// Where the highlight has to be, by the logic itself, told of every movement at the moment at
/// which it is sent: what a program without any delay would show.
class ExpectedHighlight {
public:
    using Clock = std::chrono::steady_clock;

    struct Show {
        Rect frame;
        Clock::time_point at;  ///< When the movement was sent that leads to it.
    };

    /// A drag that has begun in the middle of the screen.
    explicit ExpectedHighlight(const Rect& visibleFrame);

    void pointerMoved(const Point& to, Clock::time_point at);

    const std::vector<Show>& shows() const;

private:
    class Recorder;

    std::vector<SnapCommand> commands_;
    std::shared_ptr<Recorder> recorder_;
    DragSnapController controller_;
};

}  // namespace lumatile::benchmark
