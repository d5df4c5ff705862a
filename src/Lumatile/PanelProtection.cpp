#include "Lumatile/PanelProtection.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "blacklist/Blacklist.h"
#include "displays/ScreenLookup.h"
#include "oled_protection/OLEDStatus.h"
#include "ports/InputState.h"
#include "ports/Workspace.h"
#include "windows/AXBridge.h"
#include "windows/WriteBatch.h"

namespace lumatile {

namespace {

constexpr double pauseSeconds = 3;

// The demonstration's are short enough to be waited for, seconds.
constexpr double exaggeratedIdleThreshold = 15;
constexpr double exaggeratedRamp = 2;
constexpr double usualRamp = 5;

}  // namespace

PanelProtection::PanelProtection(Platform platform, const Blacklist& blacklist)
    : platform_(std::move(platform)), blacklist_(blacklist) {}

void PanelProtection::apply(const OLEDSettings& settings, bool exaggerated) {
    if (isApplied_ && settings == settings_ && exaggerated == exaggerated_) {
        return;
    }
    if (oledRunning_ && movesWindows() && !settings.orbitEnabled && !settings.jitterEnabled) {
        meetReturnedWindows();
    }
    isApplied_ = true;
    settings_ = settings;
    exaggerated_ = exaggerated;
    jitter_ = settings.jitterPolicy(exaggerated);
    {
        const WriteBatch together(platform_.accessibility);
        orbit_.setConfig(settings.orbitConfig(exaggerated));
        orbit_.setJitter(settings.jitterEnabled ? std::optional(jitter_) : std::nullopt);
    }
    if (dimmer_) {
        dimmer_->config = dimmerConfig();
    }
    if (oledRunning_) {
        expectDimming();
        restartOrbitTimer();
    }
}

void PanelProtection::start() {
    oledRunning_ = true;
    expectDimming();
    restartOrbitTimer();
    if (!dimmer_) {
        dimSurface_ = std::make_shared<ScreenDimSurface>(platform_.dimOverlays, platform_.runLoop);
        dimSurface_->rebuild();
        dimmer_.emplace(dimmerConfig(), dimSurface_, [&input = platform_.inputState] {
            return input.idleSeconds().value_or(0);
        });
    }
    dimTimer_ = platform_.runLoop.repeat(dimTick, [this] { dimmer_->tick(); });
}

void PanelProtection::stop() {
    orbitTimer_.reset();
    orbitPacer_.reset();
    dimTimer_.reset();
    if (std::exchange(oledRunning_, false)) {
        meetReturnedWindows();
    }
    {
        const WriteBatch together(platform_.accessibility);
        homes_.stop();
    }
    platform_.inputState.expectDimming(std::nullopt);
    if (dimSurface_) {
        dimSurface_->setLevel(0);
    }
}

std::array<std::string, 3> PanelProtection::statusLines() const {
    const double now = platform_.runLoop.now();
    const Offset shift = jitter_.offset(now);
    const IdleDimmer::Config dim = dimmerConfig();
    return {OLEDStatus::pixelShiftLine(settings_.orbitEnabled, orbit_.trackedCount(),
                                       orbit_.lastShift(), now, exaggerated_),
            OLEDStatus::edgeJitterLine(settings_.jitterEnabled, shift.dx, shift.dy),
            OLEDStatus::idleDimLine(dim.enabled, dim.maxLevel, dim.idleThreshold)};
}

void PanelProtection::restartOrbitTimer() {
    orbitTimer_.reset();
    orbitPacer_.reset();
    // Where windows are not moved there is nothing to wake up for.
    if (movesWindows()) {
        lastTick_ = platform_.runLoop.now();
        orbitPacer_ = freshPacer();
        orbitTimer_ = platform_.runLoop.repeat(orbitTick, [this] { tickOrbit(); });
    }
}

OrbitPacer PanelProtection::freshPacer() const {
    return {settings_.orbitInterval(exaggerated_), settings_.orbitWaitForPause && !exaggerated_,
            pauseSeconds, platform_.runLoop.now()};
}

/// Stored settings may hold anything; so put, what is not a number counts as the least.
IdleDimmer::Config PanelProtection::dimmerConfig() const {
    const double threshold = exaggerated_ ? exaggeratedIdleThreshold : settings_.idleThreshold;
    return {std::max(leastIdleThreshold, threshold),
            std::min(std::max(0.0, settings_.idleDimStrength), 1.0),
            exaggerated_ ? exaggeratedRamp : usualRamp, settings_.idleDimEnabled};
}

void PanelProtection::expectDimming() {
    const IdleDimmer::Config dim = dimmerConfig();
    platform_.inputState.expectDimming(dim.enabled ? std::optional(dim.idleThreshold)
                                                   : std::nullopt);
}

/// A tick comes a little early or late. One that comes a millisecond before a step is due would put
/// the step off by a whole second, so it counts as come when it should have; where it is further
/// off, the clock was set or the program held up.
double PanelProtection::timeOfTick(double now) {
    const double due = lastTick_ + orbitTick;
    lastTick_ = std::abs(now - due) < orbitTick / 2 ? due : now;
    return lastTick_;
}

void PanelProtection::tickOrbit() {
    const double now = timeOfTick(platform_.runLoop.now());
    if (orbitPacer_->isAheadOfClock(now)) {
        orbitPacer_ = freshPacer();
    }
    // A tick before that asks nothing of the window system.
    if (now < orbitPacer_->nextDue) {
        return;
    }
    InputState& input = platform_.inputState;
    const double idle = input.idleSeconds().value_or(std::numeric_limits<double>::infinity());
    if (orbitPacer_->shouldStep(now, input.isDragButtonDown(), idle)) {
        step(now);
    }
}

void PanelProtection::step(double now) {
    homes_.sync(candidateWindows(), platform_.screenList.origin());
    // The screens are asked for once a step, not for every window.
    orbit_.setBounds([screens = platform_.screenList.screens()](const Rect& frame) {
        return visibleFrameOfScreenContaining(screens, frame.center());
    });
    const WriteBatch together(platform_.accessibility);
    homes_.step(now);
}

/// Before windows go home: those that came back since the last step have to as well.
void PanelProtection::meetReturnedWindows() {
    homes_.add(candidateWindows(), platform_.screenList.origin());
}

std::vector<std::shared_ptr<WindowControlling>> PanelProtection::candidateWindows() const {
    return AXBridge(platform_.accessibility).windowsOfApplications(candidateApplications());
}

std::vector<Pid> PanelProtection::candidateApplications() const {
    std::vector<Pid> pids;
    for (const RunningApplication& application : platform_.workspace.runningApplications()) {
        if (application.isRegular && !application.isHidden &&
            application.pid != platform_.workspace.ownPid() &&
            !blacklist_.contains(application.applicationId)) {
            pids.push_back(application.pid);
        }
    }
    return pids;
}

}  // namespace lumatile
