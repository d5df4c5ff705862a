#include "tests/desktop/support/GLibRunLoop.h"

#include <glib.h>

#include <chrono>
#include <cmath>
#include <utility>

namespace lumatile::desktop {
namespace {

using Work = std::function<void()>;

class GLibTimer final : public RunLoopTimer {
public:
    GLibTimer(double seconds, Work tick) : tick_(std::move(tick)) {
        constexpr double millisecondsPerSecond = 1000;
        source_ = g_timeout_add(
            static_cast<guint>(std::ceil(seconds * millisecondsPerSecond)),
            [](gpointer work) -> gboolean {
                // A tick may destroy its own timer.
                const Work once = *static_cast<Work*>(work);
                once();
                return G_SOURCE_CONTINUE;
            },
            &tick_);
    }
    GLibTimer(const GLibTimer&) = delete;
    GLibTimer& operator=(const GLibTimer&) = delete;
    ~GLibTimer() override { g_source_remove(source_); }

private:
    Work tick_;
    guint source_ = 0;
};

}  // namespace

double GLibRunLoop::now() {
    const auto time = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double>(time).count();
}

std::unique_ptr<RunLoopTimer> GLibRunLoop::repeat(double seconds, std::function<void()> tick) {
    return std::make_unique<GLibTimer>(seconds, std::move(tick));
}

void GLibRunLoop::post(std::function<void()> work) {
    g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer data) -> gboolean {
            (*static_cast<Work*>(data))();
            return G_SOURCE_REMOVE;
        },
        new Work(std::move(work)), [](gpointer data) { delete static_cast<Work*>(data); });
}

}  // namespace lumatile::desktop
