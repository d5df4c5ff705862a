#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include "geometry/Point.h"
#include "geometry/Rect.h"
#include "oled_protection/OrbitScheduler.h"
#include "windows/AXElementKey.h"
#include "windows/WindowControlling.h"

namespace lumatile {

/// Runs an orbit and keeps the homes of the windows that the orbit loses sight of: minimized or
/// maximized ones, those of a program that is hidden or hangs. The orbit would take the place of
/// such a window, shifted as it is, for its home when it meets it again, and so a little more each
/// time. A window that comes back where it was left gets its home back; one that is elsewhere was
/// moved by somebody.
class HomeKeeper {
public:
    using Windows = std::vector<std::shared_ptr<WindowControlling>>;

    /// @param orbit outlives the keeper; what is noted as snapped is told to it directly
    explicit HomeKeeper(OrbitScheduler& orbit) : orbit_(orbit) {}

    /// Makes these the orbit's windows.
    /// @param origin where the accessibility space begins in the arrangement of the screens. When
    ///   that has changed, the homes of windows that lie where they lay in the arrangement follow.
    void sync(const Windows& windows, const Point& origin);

    /// The same for these and the windows that the orbit has already, before all go home.
    void add(Windows windows, const Point& origin);

    /// Takes the orbit's step. A window that hung while it was moved, and is now neither here nor
    /// there, keeps its home.
    void step(double now);

    /// Stops the orbit. Windows that could not be brought home get home when they are met again.
    void stop();

private:
    /// Gone windows are looked for when so many are known.
    static constexpr std::size_t fewWindows = 1024;

    struct Known {
        std::shared_ptr<WindowControlling> window;
        Rect home;
        Rect left;     ///< Where it was left.
        Rect before;   ///< Where it was before the step that left it there, which may have failed.
        Point origin;  ///< Of the space that these are in.

        bool mayHaveBeenLeftAt(const Rect& frame) const;
        Known seenFrom(const Point& other) const;
    };

    void meet(const Windows& windows, const Point& origin, bool looksAtAll);
    void note();
    void giveBack(const AXElementKey& key, const Rect& frame);
    void forgetGoneWindows();

    OrbitScheduler& orbit_;
    std::unordered_map<AXElementKey, Known> known_;  // Present windows and others.
    Point origin_;
    std::size_t most_ = fewWindows;
};

}  // namespace lumatile
