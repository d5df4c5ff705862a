#include "platform/simulated/SimulatedWindowManager.h"

#include <algorithm>
#include <cmath>

namespace lumatile {

namespace {

// How long a program that serves assistive programs lets its windows glide.
constexpr double animationSeconds = 0.25;

/// The largest of base, base + step, base + 2 steps … that is not above `wanted`.
double inSteps(double wanted, double base, double step) {
    if (step <= 1 || wanted <= base) {
        return wanted;
    }
    return base + std::floor((wanted - base) / step) * step;
}

}  // namespace

std::shared_ptr<const SimulatedWindowManager::Answer> SimulatedWindowManager::request(
    WindowID id, const WindowRequest& request) {
    const auto answer = std::make_shared<Answer>();
    SimulatedWindow* window = programs_.find(id);
    if (!window || window->traits.isFullScreen || !window->traits.isMovable ||
        policy.refusesMoves) {
        answer->isSettled = true;
        return answer;
    }
    if (policy.leavesUnanswered) {
        return answer;
    }
    const SimulatedApplication* owner = programs_.find(window->application);
    if (owner && owner->traits.enhancedUserInterface.value_or(false)) {
        // The program glides to the place and says it is there at once; whatever is asked of it on
        // the way takes the place of what it was about to do.
        const std::uint64_t animation = ++lastAnimation_;
        window->pendingAnimation = animation;
        clock_.happen(SimulatedClock::fromSeconds(animationSeconds),
                      [this, id, request, animation] {
                          SimulatedWindow* later = programs_.find(id);
                          if (later && later->pendingAnimation == animation) {
                              apply(*later, request);
                          }
                      });
        *answer = {true, true};
        return answer;
    }
    if (policy.latencySeconds <= 0) {
        apply(*window, request);
        *answer = {true, true};
        return answer;
    }
    clock_.happen(SimulatedClock::fromSeconds(policy.latencySeconds), [this, id, request, answer] {
        answer->isSettled = true;
        if (SimulatedWindow* later = programs_.find(id)) {
            apply(*later, request);
            answer->isApplied = true;
        }
    });
    return answer;
}

void SimulatedWindowManager::moveByHand(WindowID id, const Rect& arranged) {
    SimulatedWindow* window = programs_.find(id);
    if (!window) {
        return;
    }
    Rect pixels = SimulatedGeometry::rounded(arranged);
    const Size allowed = allowedSize(*window, pixels.size());
    pixels.width = allowed.width;
    pixels.height = allowed.height;
    window->traits.isMaximized = false;
    window->geometry = {pixels, pixels};
}

void SimulatedWindowManager::rescueStranded() {
    const std::optional<Rect> refuge = screens_.primaryVisibleArrangedFrame();
    if (!policy.rescuesStranded || !refuge) {
        return;
    }
    for (const WindowID id : programs_.stacking()) {
        SimulatedWindow* window = programs_.find(id);
        if (window && !screens_.visibleArrangedFrameAt(window->geometry.pixels.center())) {
            Rect& pixels = window->geometry.pixels;
            pixels.x = std::floor(refuge->x + 0.5);
            pixels.y = std::floor(refuge->y + 0.5);
            window->geometry.asked = pixels;
        }
    }
}

void SimulatedWindowManager::apply(SimulatedWindow& window, const WindowRequest& request) const {
    SimulatedGeometry& geometry = window.geometry;
    window.traits.isMaximized = false;
    window.owesAnswer = false;
    Rect asked = geometry.current();
    // A size is rounded against the place last asked for, which a change of fraction alone has not
    // made invalid.
    if (SimulatedGeometry::rounded(geometry.asked).origin() == geometry.pixels.origin()) {
        asked.x = geometry.asked.x;
        asked.y = geometry.asked.y;
    }
    if (request.position) {
        asked.x = request.position->x;
        asked.y = request.position->y;
    }
    if (request.size) {
        asked.width = request.size->width;
        asked.height = request.size->height;
    }
    const Rect rounded = SimulatedGeometry::rounded(asked);
    geometry.asked = asked;
    geometry.pixels.x = rounded.x;
    geometry.pixels.y = rounded.y;
    if (request.size) {
        const Size allowed = allowedSize(window, rounded.size());
        geometry.pixels.width = allowed.width;
        geometry.pixels.height = allowed.height;
    }
    if (policy.keepsWindowsWhole) {
        keepWhole(window);
    }
}

Size SimulatedWindowManager::allowedSize(const SimulatedWindow& window, const Size& outer) const {
    const SimulatedWindowTraits& traits = window.traits;
    const double bordersX = traits.decorations.left + traits.decorations.right;
    const double bordersY = traits.decorations.top + traits.decorations.bottom;
    Size content{outer.width - bordersX, outer.height - bordersY};
    if (policy.honoursIncrements) {
        content = {inSteps(content.width, traits.baseContent.width, traits.increment.width),
                   inSteps(content.height, traits.baseContent.height, traits.increment.height)};
    }
    return {std::max(content.width, std::max(traits.minimumContent.width, 1.0)) + bordersX,
            std::max(content.height, std::max(traits.minimumContent.height, 1.0)) + bordersY};
}

void SimulatedWindowManager::keepWhole(SimulatedWindow& window) const {
    Rect& pixels = window.geometry.pixels;
    const std::optional<Rect> screen = screens_.visibleArrangedFrameAt(pixels.origin());
    if (!screen) {
        return;
    }
    // A window that does not fit keeps its top-left corner in sight.
    pixels.x = std::max(screen->minX(), std::min(pixels.x, screen->maxX() - pixels.width));
    pixels.y = std::max(screen->minY(), std::min(pixels.y, screen->maxY() - pixels.height));
}

}  // namespace lumatile
