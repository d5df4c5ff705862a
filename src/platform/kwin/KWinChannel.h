#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "base/Lifeline.h"
#include "base/ObserverList.h"
#include "platform/freedesktop/bus/LoneBusConnection.h"
#include "platform/kwin/KWinMirror.h"
#include "platform/kwin/KWinOrder.h"
#include "platform/kwin/KWinReport.h"
#include "ports/RunLoop.h"

namespace lumatile {

/// The way to the script in KWin and back. It loads the script, keeps the mirror as the script
/// tells it, gives the script its orders, and starts over when KWin or the script is gone.
///
/// The script asks for orders and is answered when there are some, or with none before its question
/// grows old. Only KWin's own calls are heard, at an object whose name is another one in each run.
class KWinChannel {
public:
    using Clock = LoneBusConnection::Clock;

    enum class State : std::uint8_t {
        absent,     ///< There is no KWin on the bus.
        starting,   ///< The script has been loaded and has not said anything yet.
        answering,  ///< The mirror holds what there is.
        refused,    ///< KWin is there and takes no scripts.
    };

    /// @param address of the session bus
    /// @param runLoop outlives the channel
    KWinChannel(std::string address, RunLoop& runLoop);
    KWinChannel(const KWinChannel&) = delete;
    KWinChannel& operator=(const KWinChannel&) = delete;

    /// Takes the script out of KWin.
    ~KWinChannel();

    State state() const { return state_; }
    bool isAnswering() const { return state_ == State::answering; }

    /// The mirror, with everything that has arrived by now. Observers are told of that within this.
    KWinMirror& mirror();

    /// The mirror as it was left by the last turning over of the channel. For observers: one that
    /// turned the channel over would hear later events before it is done with an earlier one.
    KWinMirror& mirrorSoFar() { return mirror_; }

    /// Waits until the script has answered for the first time or `seconds` are over.
    void awaitAnswer(double seconds);

    /// Gives an order.
    /// @return the number under which its result is told; 0 where there is nobody to take it
    std::uint64_t give(KWinOrder order);

    /// What became of an order; nothing as long as that is not known.
    std::optional<KWinDone::Result> resultOf(std::uint64_t number) const;

    /// Turns the channel over, and nothing else of the program, until `isDone`. A script that has
    /// let one wait pass without a word is not waited for again until it says something.
    /// @return false when it was not within `seconds`
    bool waitUntil(const std::function<bool()>& isDone, double seconds);

    /// Runs `work` as soon as everything has been taken in that had arrived before: what the bus
    /// has told of since, such as a key press, is about windows as they are then.
    void inTurn(std::function<void()> work);

    /// Told of each event after the mirror has it, and of the state. These run while somebody may
    /// be waiting, so they only note what is to be done.
    using EventSubscription = ObserverList<const KWinEvent&>::Subscription;
    EventSubscription observe(std::function<void(const KWinEvent&)> told) {
        return events_.add(std::move(told));
    }
    using StateSubscription = ObserverList<>::Subscription;
    StateSubscription observeState(std::function<void()> changed) {
        return states_.add(std::move(changed));
    }

    /// The connection to the bus, for other services of KWin, whose signals then keep their order
    /// with what the script tells; null while there is none.
    LoneBusConnection* connection() { return connection_.get(); }

private:
    void start();
    void load();
    void begin(bool isLoaded);
    void lose(State next);
    void setState(State state);
    void retryLater();
    void called(const LoneBusConnection::Call& call);
    void takeIn();
    void takeInAnew();
    void takeWhile(const std::function<bool()>& mayGoOn);
    void take(const std::string& text);
    void answerNow();
    void expectQuestion();
    void unload();
    void removeScript();

    std::string address_;
    RunLoop& runLoop_;
    std::unique_ptr<LoneBusConnection> connection_;
    std::string scriptFile_;
    KWinMirror mirror_;
    State state_ = State::absent;
    // What the script has said and nobody has looked at, and what waits its turn behind it.
    std::deque<std::variant<std::string, std::function<void()>>> untaken_;
    Clock::time_point turn_;   // When the program's present turn of taking in began.
    std::uint64_t heard_ = 0;  // Calls of the script.
    bool isSilent_ = false;    // Since the last wait, which was in vain.
    bool isTaking_ = false;
    bool isTakingLater_ = false;
    GDBusMethodInvocation* question_ = nullptr;  // Of the script, unanswered.
    std::vector<KWinNumberedOrder> orders_;      // Not fetched yet.
    std::uint64_t lastOrder_ = 0;
    std::map<std::uint64_t, KWinDone::Result> results_;  // Of the last orders.
    std::unique_ptr<RunLoopTimer> patience_;             // Until something is overdue.
    std::unique_ptr<RunLoopTimer> retry_;
    double retryAfter_;  // Seconds.
    ObserverList<const KWinEvent&> events_;
    ObserverList<> states_;
    Lifeline lifeline_;
};

}  // namespace lumatile
