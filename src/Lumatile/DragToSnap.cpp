#include "Lumatile/DragToSnap.h"

#include <string>
#include <utility>

#include "commands/CommandStore.h"
#include "oled_protection/JitterPolicy.h"
#include "oled_protection/OrbitScheduler.h"
#include "ports/RunLoop.h"
#include "windows/AXBridge.h"
#include "windows/AttributeName.h"
#include "windows/AttributeReader.h"

namespace lumatile {

namespace {

/// Windows that people move about; not panels, desktops, menus and the like.
bool isDraggable(AccessibilityPlatform& platform, const AXWindow& window) {
    const auto subrole =
        AttributeReader::value<std::string>(platform, window.element(), AttributeName::subrole);
    return subrole == AttributeName::standardWindowSubrole ||
           subrole == AttributeName::dialogSubrole ||
           subrole == AttributeName::floatingWindowSubrole;
}

std::shared_ptr<WindowControlling> windowUnder(AccessibilityPlatform& platform,
                                               const Point& point) {
    const std::shared_ptr<AXWindow> window = AXBridge(platform).windowAt(point);
    return window && isDraggable(platform, *window) ? window : nullptr;
}

}  // namespace

DragToSnap::DragToSnap(Services services) : services_(std::move(services)) {}

DragToSnap::~DragToSnap() = default;

void DragToSnap::start() {
    if (!controller_) {
        makeController();
    }
    readSwitch();
    dragSettingObserver_ = services_.platform.preferences.observe([this] { readSwitch(); });
    mouse_ = std::make_shared<MouseConductor>(controller_, services_.platform.mouseTaps,
                                              services_.platform.log);
    mouse_->start();
    isRunning_ = true;
    tellDesktop();
}

void DragToSnap::stop() {
    isRunning_ = false;
    tellDesktop();
    if (mouse_) {
        mouse_->stop();
        mouse_.reset();
    }
    dragSettingObserver_.reset();
    if (controller_) {
        controller_->cancel();
    }
}

void DragToSnap::makeController() {
    Services& services = services_;
    controller_ = std::make_shared<DragSnapController>(
        services.platform.highlight,
        [&services](const Point& point) {
            return windowUnder(services.platform.accessibility, point);
        },
        [&services](const Point& point) -> std::optional<ScreenContext> {
            const auto frame = services.displays().screens->visibleFrameAt(point);
            return frame ? std::optional(ScreenContext::of(*frame)) : std::nullopt;
        },
        [&services]() -> const std::vector<SnapCommand>& { return services.store.commands; });
    controller_->adjustTarget = [this](const Rect& frame, const ScreenContext& screen) {
        dropTarget_ = frame;
        return services_.jitter.adjust(frame, screen.visibleFrame,
                                       services_.platform.runLoop.now());
    };
    controller_->onSnap = [this](const std::shared_ptr<WindowControlling>& window, const Rect&) {
        services_.orbit.noteSnapped(window, std::exchange(dropTarget_, std::nullopt));
    };
}

void DragToSnap::readSwitch() {
    controller_->tilingByEdgeDragEnabled =
        services_.platform.preferences.boolean(preferenceKey).value_or(true);
    tellDesktop();
}

void DragToSnap::tellDesktop() {
    services_.platform.mouseTaps.setTakesDrops(isRunning_ && controller_->tilingByEdgeDragEnabled);
}

}  // namespace lumatile
