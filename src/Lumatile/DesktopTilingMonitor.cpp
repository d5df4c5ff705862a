#include "Lumatile/DesktopTilingMonitor.h"

#include <functional>
#include <string_view>
#include <utility>

namespace lumatile {

SystemTiling readTiling(DesktopTiling& desktop) {
    return SystemTiling::read(desktop.majorVersion(),
                              [&](std::string_view key) { return desktop.lookup(key); });
}

std::unique_ptr<SystemTilingMonitor> monitorTiling(DesktopTiling& desktop, RunLoop& runLoop) {
    return std::make_unique<SystemTilingMonitor>(
        [&desktop] { return readTiling(desktop); },
        [&runLoop](double seconds, std::function<void()> tick) {
            return std::shared_ptr<void>(runLoop.repeat(seconds, std::move(tick)));
        });
}

}  // namespace lumatile
