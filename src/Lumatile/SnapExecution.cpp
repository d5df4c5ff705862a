#include "Lumatile/SnapExecution.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "blacklist/Blacklist.h"
#include "commands/CommandStore.h"
#include "displays/DisplayService.h"
#include "displays/ScreenLookup.h"
#include "geometry/Grid.h"
#include "geometry/Orientation.h"
#include "oled_protection/OrbitScheduler.h"
#include "ports/RunLoop.h"
#include "ports/Workspace.h"
#include "windows/AXBridge.h"

namespace lumatile {

SnapExecution::SnapExecution(Services services) : services_(std::move(services)) {}

void SnapExecution::performCommand(const SnapCommand& command) { perform(command, frontWindow()); }

void SnapExecution::performCommandBehindUs(const SnapCommand& command) {
    perform(command, windowBehindUs());
}

void SnapExecution::perform(const SnapCommand& command,
                            const std::shared_ptr<WindowControlling>& window) {
    if (!window || isBlacklisted(*window)) {
        return;
    }
    const Rect present = window->frame().value_or(Rect{});
    const std::optional<Rect> visibleFrame =
        visibleFrameOfScreenContaining(services_.platform.screenList, present.center());
    if (!visibleFrame) {
        return;
    }
    const SnapCommand oriented = services_.store.counterpart(command, orientationOf(*visibleFrame));
    const std::optional<Placement> target = placement(oriented, *window, *visibleFrame);
    if (!target) {
        return;
    }
    if (const std::optional<Rect> before = window->frame()) {
        recordFrame(before, window->key());
    }
    window->setFrame(target->frame);
    services_.orbit.noteSnapped(window, target->home);
}

void SnapExecution::recordFrame(const std::optional<Rect>& frame, const AXElementKey& key) {
    if (frame) {
        frameHistory_.insert_or_assign(key, *frame);
    } else {
        frameHistory_.erase(key);
    }
}

std::shared_ptr<WindowControlling> SnapExecution::frontWindow() {
    const AXBridge bridge(services_.platform.accessibility);
    if (const auto front = services_.platform.workspace.frontmostApplication()) {
        if (auto window = bridge.windowOfApplication(front->pid)) {
            return window;
        }
    }
    return bridge.focusedWindow();
}

std::shared_ptr<WindowControlling> SnapExecution::windowBehindUs() {
    Workspace& workspace = services_.platform.workspace;
    const auto front = workspace.frontmostApplication();
    // Its window may have come in front between the choice and now.
    if (front && front->pid != workspace.ownPid()) {
        return frontWindow();
    }
    const auto other = workspace.frontmostOtherApplication();
    return other ? AXBridge(services_.platform.accessibility).windowOfApplication(other->pid)
                 : nullptr;
}

bool SnapExecution::isBlacklisted(const WindowControlling& window) {
    const std::optional<Pid> pid = window.pid();
    if (!pid) {
        return false;
    }
    const std::vector<RunningApplication> running =
        services_.platform.workspace.runningApplications();
    const auto owner = std::find_if(running.begin(), running.end(),
                                    [&](const auto& each) { return each.pid == *pid; });
    return services_.blacklist.contains(owner == running.end() ? std::nullopt
                                                               : owner->applicationId);
}

std::optional<SnapExecution::Placement> SnapExecution::placement(const SnapCommand& command,
                                                                 const WindowControlling& window,
                                                                 const Rect& visibleFrame) {
    switch (command.kind) {
        case Kind::area: {
            const Rect target = Grid::rect(command.targetArea(), visibleFrame, command.axis);
            const double now = services_.platform.runLoop.now();
            return Placement{services_.jitter.adjust(target, visibleFrame, now), target};
        }
        case Kind::center: {
            const std::optional<Rect> frame = window.frame();
            if (!frame) {
                return std::nullopt;
            }
            return Placement{Grid::centered(frame->size(), visibleFrame), std::nullopt};
        }
        case Kind::restore: {
            const auto remembered = frameHistory_.find(window.key());
            if (remembered != frameHistory_.end()) {
                return Placement{remembered->second, std::nullopt};
            }
            return Placement{window.frame().value_or(visibleFrame), std::nullopt};
        }
        case Kind::nextDisplay:
        case Kind::previousDisplay: {
            const std::optional<Rect> frame = window.frame();
            if (!frame) {
                return std::nullopt;
            }
            const int step = command.kind == Kind::nextDisplay ? 1 : -1;
            return Placement{services_.displays().frameOnNeighbour(*frame, step), std::nullopt};
        }
    }
    return std::nullopt;
}

}  // namespace lumatile
