#include "platform/simulated/SimulatedScreens.h"

#include <algorithm>

namespace lumatile {

std::vector<PlatformScreen> SimulatedScreens::screens() {
    std::vector<PlatformScreen> result;
    if (screens_.empty()) {
        return result;
    }
    const double primaryHeight = ordered().front()->arranged.height;
    const auto flipped = [&](const Rect& arranged) {
        const Rect accessible = toAccessibility(arranged);
        return Rect{accessible.x, primaryHeight - accessible.maxY(), accessible.width,
                    accessible.height};
    };
    for (const Screen* screen : ordered()) {
        result.push_back({flipped(screen->arranged), flipped(screen->visible())});
    }
    return result;
}

void SimulatedScreens::plug(std::string_view name, const Rect& arranged) {
    if (Screen* screen = find(name)) {
        screen->arranged = arranged;
    } else {
        screens_.push_back({std::string(name), arranged, {}});
    }
    place();
}

void SimulatedScreens::unplug(std::string_view name) {
    std::erase_if(screens_, [&](const Screen& screen) { return screen.name == name; });
    place();
}

void SimulatedScreens::makePrimary(std::string_view name) {
    if (find(name)) {
        primary_ = name;
    }
    place();
}

void SimulatedScreens::addPanel(std::string_view screen, ScreenEdge edge, double thickness) {
    if (Screen* found = find(screen)) {
        found->panels[edge] += thickness;
    }
}

void SimulatedScreens::removePanels(std::string_view screen) {
    if (Screen* found = find(screen)) {
        found->panels.clear();
    }
}

Rect SimulatedScreens::toArrangement(const Rect& accessible) const {
    return accessible.offsetBy(origin_.x, origin_.y);
}

Rect SimulatedScreens::toAccessibility(const Rect& arranged) const {
    return arranged.offsetBy(-origin_.x, -origin_.y);
}

std::optional<Rect> SimulatedScreens::frame(std::string_view name) const {
    const Screen* screen = find(name);
    return screen ? std::optional(toAccessibility(screen->arranged)) : std::nullopt;
}

std::optional<Rect> SimulatedScreens::visibleFrame(std::string_view name) const {
    const Screen* screen = find(name);
    return screen ? std::optional(toAccessibility(screen->visible())) : std::nullopt;
}

std::optional<Rect> SimulatedScreens::visibleArrangedFrameAt(const Point& point) const {
    for (const Screen* screen : ordered()) {
        if (screen->arranged.contains(point)) {
            return screen->visible();
        }
    }
    return std::nullopt;
}

std::optional<Rect> SimulatedScreens::primaryVisibleArrangedFrame() const {
    return screens_.empty() ? std::nullopt : std::optional(ordered().front()->visible());
}

Rect SimulatedScreens::Screen::visible() const {
    Rect rest = arranged;
    for (const auto& [edge, thickness] : panels) {
        switch (edge) {
            case ScreenEdge::left:
                rest.x += thickness;
                rest.width = std::max(0.0, rest.width - thickness);
                break;
            case ScreenEdge::right:
                rest.width = std::max(0.0, rest.width - thickness);
                break;
            case ScreenEdge::top:
                rest.y += thickness;
                rest.height = std::max(0.0, rest.height - thickness);
                break;
            case ScreenEdge::bottom:
                rest.height = std::max(0.0, rest.height - thickness);
                break;
        }
    }
    return rest;
}

SimulatedScreens::Screen* SimulatedScreens::find(std::string_view name) {
    const auto found = std::find_if(screens_.begin(), screens_.end(),
                                    [&](const Screen& screen) { return screen.name == name; });
    return found == screens_.end() ? nullptr : &*found;
}

const SimulatedScreens::Screen* SimulatedScreens::find(std::string_view name) const {
    const auto found = std::find_if(screens_.begin(), screens_.end(),
                                    [&](const Screen& screen) { return screen.name == name; });
    return found == screens_.end() ? nullptr : &*found;
}

std::vector<const SimulatedScreens::Screen*> SimulatedScreens::ordered() const {
    std::vector<const Screen*> result;
    result.reserve(screens_.size());
    for (const Screen& screen : screens_) {
        result.push_back(&screen);
    }
    std::stable_partition(result.begin(), result.end(),
                          [&](const Screen* screen) { return screen->name == primary_; });
    return result;
}

void SimulatedScreens::place() {
    if (screens_.empty()) {
        return;
    }
    if (!find(primary_)) {
        primary_ = screens_.front().name;
    }
    origin_ = ordered().front()->arranged.origin();
}

}  // namespace lumatile
