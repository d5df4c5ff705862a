#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

#include "Lumatile/MouseConductor.h"
#include "displays/DisplayService.h"
#include "drag_snap/DragSnapController.h"
#include "ports/Platform.h"
#include "ports/Preferences.h"

namespace lumatile {

class CommandStore;
class OrbitScheduler;
struct JitterPolicy;

/// Snapping by dragging, wired: the controller with the windows, the screens, the commands and the
/// hour's edge jitter, the preference that switches it, and the mouse.
class DragToSnap {
public:
    /// The preference; anything but a stored "no" counts as "yes".
    static constexpr std::string_view preferenceKey = "dragToSnapEnabled";

    /// What it works with; all of it outlives this.
    struct Services {
        Platform platform;
        const CommandStore& store;
        const JitterPolicy& jitter;
        OrbitScheduler& orbit;
        std::function<const DisplayService&()> displays;
    };

    explicit DragToSnap(Services services);
    DragToSnap(const DragToSnap&) = delete;
    DragToSnap& operator=(const DragToSnap&) = delete;
    ~DragToSnap();

    /// The controller is made at the first start and kept.
    void start();

    /// A drag under way comes to nothing.
    void stop();

    /// Null before the first start.
    const DragSnapController* controller() const { return controller_.get(); }

private:
    void makeController();
    void readSwitch();
    void tellDesktop();

    Services services_;
    std::shared_ptr<DragSnapController> controller_;
    std::shared_ptr<MouseConductor> mouse_;
    bool isRunning_ = false;
    std::unique_ptr<PreferencesWatch> dragSettingObserver_;

    /// The target of the drop under way before edge jitter: the window's home from then on.
    std::optional<Rect> dropTarget_;
};

}  // namespace lumatile
