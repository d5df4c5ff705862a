#include "Lumatile/launch/StartMemory.h"

#include "platform/freedesktop/process/CodePages.h"

namespace lumatile {

namespace {

// What the desktop does in answer to a start (tray icon, windows listed) is over by then.
constexpr double settlingSeconds = 1;

}  // namespace

void StartMemory::releaseSoon(RunLoop& runLoop) {
    startHasSettled_ = runLoop.repeat(settlingSeconds, [this] {
        CodePages::release();
        startHasSettled_.reset();
    });
}

}  // namespace lumatile
