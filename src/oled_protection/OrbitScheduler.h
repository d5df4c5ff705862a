#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "geometry/Rect.h"
#include "oled_protection/JitterPolicy.h"
#include "oled_protection/Offset.h"
#include "oled_protection/OrbitConfig.h"
#include "oled_protection/OrbitShift.h"
#include "windows/AXElementKey.h"
#include "windows/WindowControlling.h"

namespace lumatile {

/// Walks every window round a small square centred on its home, a step at a time, and applies the
/// edge jitter in the same pass. Keeps the home of each window, adopts a new one when somebody else
/// moves the window, and puts windows back when protection ends. It does no timing: whoever owns it
/// calls `sync` and `step`. Rectangles are in the accessibility space.
class OrbitScheduler {
public:
    /// The visible frame of the display under the centre of a rectangle; absent when there is none.
    using Bounds = std::function<std::optional<Rect>(const Rect& frame)>;

    struct Tracked {
        std::shared_ptr<WindowControlling> window;
        Rect home;         ///< Where the window belongs, without orbit and jitter.
        Rect lastApplied;  ///< The frame last set or seen here.
    };

    /// Pixels by which any of x, y, width and height may differ from the frame last applied before
    /// the window counts as moved by somebody else. More than the rounding of window managers, less
    /// than a person moves a window.
    static constexpr double outsideMoveTolerance = 1.5;

    explicit OrbitScheduler(const OrbitConfig& config = {},
                            const std::optional<JitterPolicy>& jitter = std::nullopt);
    OrbitScheduler(const OrbitScheduler&) = delete;
    OrbitScheduler& operator=(const OrbitScheduler&) = delete;
    ~OrbitScheduler() = default;

    /// The points of a square's perimeter, clockwise on screen from its top-left corner, each
    /// corner once. A side is walked in strides, of which the last is shortened to end on the
    /// corner.
    /// @return the single offset (0, 0) when radius or stride is less than 1
    static std::vector<Offset> makePath(std::int64_t radius, std::int64_t stride);

    const OrbitConfig& config() const { return config_; }

    /// Takes effect at the next step. Windows go home at once when the orbit goes off and there is
    /// no jitter either.
    void setConfig(const OrbitConfig& config);

    const std::optional<JitterPolicy>& jitter() const { return jitter_; }

    /// Takes effect at the next step. Windows go home at once when the jitter goes off and the
    /// orbit is off too.
    /// @param jitter absent when edge jitter is off
    void setJitter(const std::optional<JitterPolicy>& jitter);

    /// @param bounds without it no display is known, and no edge counts as lying on its border
    void setBounds(Bounds bounds);

    /// Makes the tracked windows these. New ones get the frame that they have as home; one whose
    /// frame cannot be read is left out.
    void sync(const std::vector<std::shared_ptr<WindowControlling>>& windows);

    /// Goes one point further along the path and moves the windows. Costs at most one read, one
    /// write and one read-back a window.
    /// @param now seconds since 1970-01-01 00:00 UTC
    void step(double now);

    /// A window was placed on purpose: makes `home` its home or, when absent, the frame it has now.
    void noteSnapped(const std::shared_ptr<WindowControlling>& window,
                     const std::optional<Rect>& home = std::nullopt);

    /// Gives a tracked window another home, without moving it. Does nothing for others.
    /// @param lastApplied where the window is
    void rehome(const AXElementKey& key, const Rect& home, const Rect& lastApplied);

    /// Puts the windows home that nobody else has moved since, and starts the path over.
    void restoreHomes();

    /// `restoreHomes`, then forgets all windows.
    void stop();

    std::size_t trackedCount() const { return tracked_.size(); }

    /// The last step that moved a window.
    const std::optional<OrbitShift>& lastShift() const { return lastShift_; }

    const std::vector<Offset>& path() const { return path_; }
    std::int64_t stepIndex() const { return static_cast<std::int64_t>(stepIndex_); }

    /// What is known of a window; absent when it is not tracked.
    std::optional<Tracked> tracked(const AXElementKey& key) const;

    /// All that is known of the windows.
    const std::unordered_map<AXElementKey, Tracked>& tracked() const { return tracked_; }

private:
    std::vector<AXElementKey> trackedKeys() const;
    void stepWindow(const AXElementKey& key, const Offset& offset, double now);
    void restoreHome(const AXElementKey& key);
    void noteWritten(const AXElementKey& key, const Rect& frame);
    void readBack();

    OrbitConfig config_;
    std::optional<JitterPolicy> jitter_;
    Bounds bounds_;
    std::vector<Offset> path_;
    std::optional<OrbitShift> lastShift_;
    std::unordered_map<AXElementKey, Tracked> tracked_;
    std::vector<AXElementKey> written_;  // Not read back yet.
    std::size_t stepIndex_ = 0;
};

}  // namespace lumatile
