#include "platform/simulated/SimulatedPrograms.h"

#include <algorithm>
#include <utility>

namespace lumatile {

ApplicationID SimulatedPrograms::launch(SimulatedApplicationTraits traits) {
    const auto id = static_cast<ApplicationID>(++lastID_);
    SimulatedApplication application;
    application.id = id;
    application.traits = std::move(traits);
    applications_.emplace(id, std::move(application));
    return id;
}

void SimulatedPrograms::quit(ApplicationID id) {
    const SimulatedApplication* application = find(id);
    if (!application) {
        return;
    }
    const std::vector<WindowID> windows = application->windows;
    for (const WindowID window : windows) {
        close(window);
    }
    applications_.erase(id);
}

WindowID SimulatedPrograms::open(ApplicationID application, SimulatedWindowTraits traits,
                                 const Rect& arranged) {
    const auto id = static_cast<WindowID>(++lastID_);
    SimulatedApplication* owner = find(application);
    if (!owner) {
        return id;
    }
    SimulatedWindow window;
    window.id = id;
    window.application = application;
    window.geometry = {SimulatedGeometry::rounded(arranged), arranged};
    window.traits = std::move(traits);
    const bool isMinimized = window.traits.isMinimized;
    windows_.emplace(id, std::move(window));
    owner->windows.push_back(id);
    stacking_.push_back(id);
    if (!isMinimized) {
        focus(id);
    }
    return id;
}

void SimulatedPrograms::close(WindowID id) {
    const SimulatedWindow* window = find(id);
    if (!window) {
        return;
    }
    if (SimulatedApplication* owner = find(window->application)) {
        std::erase(owner->windows, id);
        std::erase(owner->focusOrder, id);
    }
    std::erase(stacking_, id);
    windows_.erase(id);
    if (focused_ == id) {
        focusTopmost();
    }
}

void SimulatedPrograms::focus(WindowID id) {
    SimulatedWindow* window = find(id);
    if (!window) {
        return;
    }
    window->traits.isMinimized = false;
    if (SimulatedApplication* owner = find(window->application)) {
        owner->isHidden = false;
        std::erase(owner->focusOrder, id);
        owner->focusOrder.push_back(id);
    }
    std::erase(stacking_, id);
    stacking_.push_back(id);
    focused_ = id;
}

void SimulatedPrograms::minimize(WindowID id) {
    SimulatedWindow* window = find(id);
    if (!window) {
        return;
    }
    window->traits.isMinimized = true;
    if (focused_ == id) {
        focusTopmost();
    }
}

void SimulatedPrograms::setHidden(ApplicationID id, bool hidden) {
    SimulatedApplication* application = find(id);
    if (!application) {
        return;
    }
    application->isHidden = hidden;
    if (focusedApplication() == id) {
        focusTopmost();
    }
}

SimulatedWindow* SimulatedPrograms::find(WindowID id) {
    const auto found = windows_.find(id);
    return found == windows_.end() ? nullptr : &found->second;
}

const SimulatedWindow* SimulatedPrograms::find(WindowID id) const {
    const auto found = windows_.find(id);
    return found == windows_.end() ? nullptr : &found->second;
}

SimulatedApplication* SimulatedPrograms::find(ApplicationID id) {
    const auto found = applications_.find(id);
    return found == applications_.end() ? nullptr : &found->second;
}

const SimulatedApplication* SimulatedPrograms::find(ApplicationID id) const {
    const auto found = applications_.find(id);
    return found == applications_.end() ? nullptr : &found->second;
}

SimulatedApplication* SimulatedPrograms::findByPid(Pid pid) {
    const auto found =
        std::find_if(applications_.begin(), applications_.end(),
                     [&](const auto& entry) { return entry.second.traits.pid == pid; });
    return found == applications_.end() ? nullptr : &found->second;
}

std::optional<ApplicationID> SimulatedPrograms::focusedApplication() const {
    const SimulatedWindow* window = focused_ ? find(*focused_) : nullptr;
    return window ? std::optional(window->application) : std::nullopt;
}

std::optional<WindowID> SimulatedPrograms::focusedWindow(
    const SimulatedApplication& application) const {
    const auto& order = application.focusOrder;
    const auto found = std::find_if(order.rbegin(), order.rend(), [&](WindowID id) {
        const SimulatedWindow* window = find(id);
        return window && canBeSeen(*window);
    });
    return found == order.rend() ? std::nullopt : std::optional(*found);
}

std::optional<WindowID> SimulatedPrograms::mainWindow(
    const SimulatedApplication& application) const {
    const auto isStandard = [&](WindowID id) {
        const SimulatedWindow* window = find(id);
        return window && window->isStandard();
    };
    const auto& order = application.focusOrder;
    const auto last = std::find_if(order.rbegin(), order.rend(), isStandard);
    if (last != order.rend()) {
        return *last;
    }
    const auto& windows = application.windows;
    const auto first = std::find_if(windows.begin(), windows.end(), isStandard);
    return first == windows.end() ? std::nullopt : std::optional(*first);
}

std::optional<WindowID> SimulatedPrograms::topmostAt(const Point& point) const {
    const auto found = std::find_if(stacking_.rbegin(), stacking_.rend(), [&](WindowID id) {
        const SimulatedWindow* window = find(id);
        return window && canBeSeen(*window) && window->geometry.pixels.contains(point);
    });
    return found == stacking_.rend() ? std::nullopt : std::optional(*found);
}

bool SimulatedPrograms::canBeSeen(const SimulatedWindow& window) const {
    const SimulatedApplication* owner = find(window.application);
    return window.isVisible() && owner && !owner->isHidden;
}

void SimulatedPrograms::focusTopmost() {
    focused_.reset();
    const auto next = std::find_if(stacking_.rbegin(), stacking_.rend(), [&](WindowID id) {
        const SimulatedWindow* window = find(id);
        return window && canBeSeen(*window);
    });
    if (next != stacking_.rend()) {
        focus(*next);
    }
}

}  // namespace lumatile
