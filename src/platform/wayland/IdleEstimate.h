#pragma once

#include <limits>
#include <optional>

namespace lumatile {

/// How long nobody has touched anything, as far as it can be known from a compositor that only
/// tells of pauses. A pause is told when it has lasted for `pauseSeconds`, so what is shorter
/// counts as none; from then on the time is as exact as the compositor's timer.
///
/// What is to be seen undisturbed, such as a film, keeps the compositor from telling anything: no
/// pause begins, and one that has begun does not end, whatever the user does. So the compositor is
/// asked for a pause of no length, which it tells at once unless something keeps it back: now and
/// then while it tells of no pause, and in a pause from shortly before screens are darkened. All
/// times are seconds of one clock that is never set.
class IdleEstimate {
public:
    /// Shorter than any pause that anybody here waits for.
    static constexpr double pauseSeconds = 2;

    /// A question that was not answered after so long is kept back.
    static constexpr double patience = 0.9;

    /// Between an answer and the next question, while no pause is told.
    static constexpr double secondsBetweenQuestions = 10;

    /// The same while screens are dark: whoever comes back must not wait for light.
    static constexpr double secondsBetweenDarkQuestions = 1.5;

    /// For so long before screens are darkened the question is asked.
    static constexpr double lead = 2.5;

    /// Seconds of a pause after which screens are darkened.
    double darkensAfter = std::numeric_limits<double>::infinity();

    /// Absent while something keeps the compositor from telling. Not above `darkensAfter` before it
    /// is known that nothing does.
    std::optional<double> seconds(double now) const;

    /// Whether something keeps the compositor from telling.
    bool isKeptBack(double now) const { return arrived_ && now - *arrived_ >= patience; }

    /// Whether the question should be asked now.
    bool wantsToAsk(double now) const;

    void noteAsked();               ///< It is on its way.
    void noteArrived(double now);   ///< The compositor has it.
    void noteAnswered(double now);  ///< Nothing is kept back. May come long after the question.

    void noteIdled(double now);  ///< The pause has lasted for `pauseSeconds`.
    void noteResumed();          ///< It is over.

private:
    double length(double now) const;

    std::optional<double> idled_;
    bool isAsked_ = false;
    bool mayDarken_ = false;  // In this pause the question was answered in time for it.
    std::optional<double> arrived_;
    std::optional<double> answered_;
};

}  // namespace lumatile
