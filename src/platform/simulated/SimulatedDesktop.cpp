#include "platform/simulated/SimulatedDesktop.h"

#include <utility>

namespace lumatile {

SimulatedDesktop::SimulatedDesktop()
    : runLoop(clock),
      input(clock),
      preferences(log, runLoop),
      sharedFolder(clock, runLoop),
      sharedStore(sharedFolder.join(std::nullopt)),
      hotKeys(runLoop),
      statusItem(runLoop),
      dimOverlays(screens),
      windowManager(clock, screens, programs),
      mouse(runLoop, input, screens, programs, windowManager),
      accessibility(clock, screens, programs, windowManager, traffic),
      workspace(programs) {}

Platform SimulatedDesktop::platform() {
    return {accessibility, screens,        hotKeys,    keyCodes,       workspace,   runLoop,
            preferences,   sharedStore,    log,        input,          dimOverlays, mouse,
            statusItem,    settingsWindow, onboarding, conflictPrompt, tiling,      highlight};
}

WindowID SimulatedDesktop::open(ApplicationID application, SimulatedWindowTraits traits) {
    const Rect arranged = screens.toArrangement(traits.frame);
    return programs.open(application, std::move(traits), arranged);
}

WindowID SimulatedDesktop::open(ApplicationID application, const Rect& frame) {
    SimulatedWindowTraits traits;
    traits.frame = frame;
    return open(application, std::move(traits));
}

void SimulatedDesktop::dragTo(WindowID id, const Rect& frame) {
    input.touch();
    windowManager.moveByHand(id, screens.toArrangement(frame));
}

void SimulatedDesktop::click(const Point& point) {
    input.touch();
    const Rect spot = screens.toArrangement({point.x, point.y, 0, 0});
    if (const std::optional<WindowID> id = programs.topmostAt(spot.origin())) {
        programs.focus(*id);
    } else {
        programs.focusNothing();
    }
}

void SimulatedDesktop::plug(std::string_view name, const Rect& arranged) {
    screens.plug(name, arranged);
    windowManager.rescueStranded();
}

void SimulatedDesktop::unplug(std::string_view name) {
    screens.unplug(name);
    windowManager.rescueStranded();
}

std::optional<Rect> SimulatedDesktop::seen(WindowID id) const {
    const SimulatedWindow* window = programs.find(id);
    return window ? std::optional(screens.toAccessibility(window->geometry.pixels)) : std::nullopt;
}

std::optional<Rect> SimulatedDesktop::frame(WindowID id) const {
    const SimulatedWindow* window = programs.find(id);
    return window ? std::optional(screens.toAccessibility(window->geometry.current()))
                  : std::nullopt;
}

}  // namespace lumatile
