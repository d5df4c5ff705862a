#pragma once

#include "ports/RunLoop.h"

namespace lumatile::desktop {

/// The main loop of GLib as a run loop, on the real clock.
class GLibRunLoop final : public RunLoop {
public:
    double now() override;
    std::unique_ptr<RunLoopTimer> repeat(double seconds, std::function<void()> tick) override;
    void post(std::function<void()> work) override;
};

}  // namespace lumatile::desktop
