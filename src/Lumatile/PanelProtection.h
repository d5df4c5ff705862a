#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Lumatile/ScreenDimSurface.h"
#include "displays/ScreenList.h"
#include "oled_protection/HomeKeeper.h"
#include "oled_protection/IdleDimmer.h"
#include "oled_protection/JitterPolicy.h"
#include "oled_protection/OLEDSettings.h"
#include "oled_protection/OrbitPacer.h"
#include "oled_protection/OrbitScheduler.h"
#include "ports/Platform.h"
#include "ports/RunLoop.h"

namespace lumatile {

class Blacklist;

/// The protections against burn-in at work: gives the orbit its windows and its time, and the
/// dimmer its idle seconds and its screens. Idle time that the session does not tell counts as
/// endless for the orbit, which goes on, and as none for the dimmer, which stays off.
class PanelProtection {
public:
    /// Seconds between two looks at whether a step of the orbit is due.
    static constexpr double orbitTick = 1;

    /// Seconds between two levels of the dimming, and the longest time for which it outlasts the
    /// first input.
    static constexpr double dimTick = 2;

    /// Seconds: the screens never darken sooner. After an input they clear with the next tick and
    /// its fade of 0.4 s, and are to be clear then whatever is stored.
    static constexpr double leastIdleThreshold = dimTick + 0.4;

    /// @param blacklist applications whose windows are never moved; outlives the protection
    PanelProtection(Platform platform, const Blacklist& blacklist);
    PanelProtection(const PanelProtection&) = delete;
    PanelProtection& operator=(const PanelProtection&) = delete;
    ~PanelProtection() = default;

    /// Hands the settings to everything that runs by them; the next step of the orbit is then a
    /// whole interval away. Those that are in force already change nothing.
    /// @param exaggerated the demonstration mode
    void apply(const OLEDSettings& settings, bool exaggerated);

    void start();

    /// Windows go back to their homes, the screens clear.
    void stop();

    bool oledRunning() const { return oledRunning_; }

    /// Whether windows are moved while the protection runs.
    bool movesWindows() const { return orbit_.config().enabled || orbit_.jitter().has_value(); }

    /// Pixel shift, edge jitter, idle dimming: a line each, for the status menu.
    std::array<std::string, 3> statusLines() const;

    OrbitScheduler& orbit() { return orbit_; }
    const OrbitScheduler& orbit() const { return orbit_; }

    /// For snap targets; its tolerance is 0 while edge jitter is off.
    const JitterPolicy& jitter() const { return jitter_; }

    /// Absent while no step is ever due.
    const std::optional<OrbitPacer>& orbitPacer() const { return orbitPacer_; }

    /// Absent before the first start.
    const std::optional<IdleDimmer>& dimmer() const { return dimmer_; }

private:
    void restartOrbitTimer();
    OrbitPacer freshPacer() const;
    IdleDimmer::Config dimmerConfig() const;
    void expectDimming();
    void tickOrbit();
    double timeOfTick(double now);
    void step(double now);
    void meetReturnedWindows();
    std::vector<std::shared_ptr<WindowControlling>> candidateWindows() const;
    std::vector<Pid> candidateApplications() const;

    Platform platform_;
    const Blacklist& blacklist_;
    bool isApplied_ = false;
    OLEDSettings settings_;
    bool exaggerated_ = false;
    OrbitScheduler orbit_;
    HomeKeeper homes_{orbit_};
    JitterPolicy jitter_;
    std::shared_ptr<ScreenDimSurface> dimSurface_;
    std::optional<IdleDimmer> dimmer_;
    std::unique_ptr<RunLoopTimer> orbitTimer_;
    std::optional<OrbitPacer> orbitPacer_;
    double lastTick_ = 0;  // The time that the last tick stood for, or the start before the first.
    std::unique_ptr<RunLoopTimer> dimTimer_;
    bool oledRunning_ = false;
};

}  // namespace lumatile
