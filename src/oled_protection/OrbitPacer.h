#pragma once

namespace lumatile {

/// Decides whether the next step of the orbit is due. All times are wall-clock seconds since
/// 1970-01-01 00:00 UTC.
struct OrbitPacer {
    /// Seconds without input that count as a pause of the user.
    static constexpr double usualPause = 3;

    double interval;      ///< Seconds between two steps.
    bool waitForPause;    ///< Hold a due step back until the user pauses.
    double pauseSeconds;  ///< Seconds without input that count as a pause.
    double nextDue;       ///< The step may be taken from then on.

    /// The first step comes a whole interval after `now`.
    /// @param every the interval, seconds
    /// @param waits whether a due step waits for a pause
    /// @param pause what counts as one, seconds
    OrbitPacer(double every, bool waits, double pause, double now);

    /// Whether to step now; the next step is then due an interval from now, also when this one was
    /// late. A step that is refused stays due.
    /// @param buttonDown a window may be under the user's hand
    /// @param idleSeconds since the last input of any kind
    bool shouldStep(double now, bool buttonDown, double idleSeconds);

    /// Whether the clock has been set back since the last answer, so that the next step would come
    /// later than an interval from now. A second's difference is none: clocks are trimmed.
    bool isAheadOfClock(double now) const { return nextDue - now > interval + 1; }

    bool operator==(const OrbitPacer&) const = default;
};

}  // namespace lumatile
