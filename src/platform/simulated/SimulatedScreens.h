#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "displays/ScreenList.h"
#include "geometry/Point.h"
#include "geometry/Rect.h"

namespace lumatile {

enum class ScreenEdge : std::uint8_t { left, right, top, bottom };

/// The screens on the desk, with their panels.
///
/// They lie in the arrangement's own space (y down), which stays as it is when another screen
/// becomes the primary one, as windows do. The accessibility space begins at the primary's top-left
/// corner, so it moves.
class SimulatedScreens final : public ScreenList {
public:
    std::vector<PlatformScreen> screens() override;

    /// The first screen plugged in is the primary one. A name that is there already gets the frame.
    void plug(std::string_view name, const Rect& arranged);

    /// Unplugs a screen; was it the primary one, the first of the others is primary now.
    void unplug(std::string_view name);

    void makePrimary(std::string_view name);

    /// Keeps a strip of the screen free of windows; several panels on one edge add up.
    void addPanel(std::string_view screen, ScreenEdge edge, double thickness);
    void removePanels(std::string_view screen);

    /// Without screens: where the accessibility space last began.
    Point origin() override { return origin_; }

    Rect toArrangement(const Rect& accessible) const;
    Rect toAccessibility(const Rect& arranged) const;

    /// In the accessibility space, absent when there is no such screen.
    std::optional<Rect> frame(std::string_view name) const;
    std::optional<Rect> visibleFrame(std::string_view name) const;

    /// In the arrangement: the visible frame of the first screen that contains `point`.
    std::optional<Rect> visibleArrangedFrameAt(const Point& point) const;

    /// In the arrangement: the primary screen's visible frame.
    std::optional<Rect> primaryVisibleArrangedFrame() const;

    std::size_t count() const { return screens_.size(); }

private:
    struct Screen {
        std::string name;
        Rect arranged;
        std::map<ScreenEdge, double> panels;

        Rect visible() const;
    };

    Screen* find(std::string_view name);
    const Screen* find(std::string_view name) const;
    std::vector<const Screen*> ordered() const;  // The primary one first.
    void place();

    std::vector<Screen> screens_;  // As they were plugged in.
    std::string primary_;
    Point origin_;
};

}  // namespace lumatile
