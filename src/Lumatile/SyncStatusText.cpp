#include "Lumatile/SyncStatusText.h"

#include <cmath>
#include <utility>

namespace lumatile::SyncStatusText {

namespace {

using Condition = SharedStoreStatus::Condition;

std::string withReason(const std::string& sentence, const std::string& reason) {
    return reason.empty() ? sentence + "." : sentence + " (" + reason + ").";
}

/// The two largest units, rounded down.
std::string duration(double seconds) {
    constexpr double perMinute = 60;
    constexpr double perHour = 3600;
    constexpr double perDay = 86'400;
    const auto text = [seconds](double large, const char* largeUnit, double small,
                                const char* smallUnit) {
        const double count = std::floor(seconds / large);
        const double rest = std::floor((seconds - count * large) / small);
        return std::to_string(std::llround(count)) + " " + largeUnit +
               (rest > 0 ? " " + std::to_string(std::llround(rest)) + " " + smallUnit : "");
    };
    return seconds < perHour  ? text(perMinute, "min", 1, "s")
           : seconds < perDay ? text(perHour, "h", perMinute, "min")
                              : text(perDay, "d", perHour, "h");
}

}  // namespace

std::string lastSynced(const SharedStoreStatus& status, const TimeText& timeText) {
    if (status.condition == Condition::noLocation) {
        return "Settings stay on this computer.";
    }
    if (!status.lastSynced) {
        return "Not synced yet with " + status.location + ".";
    }
    return "Last synced " + timeText(*status.lastSynced) + " with " + status.location + ".";
}

std::string failure(const SharedStoreStatus& status) {
    switch (status.condition) {
        case Condition::noLocation:
        case Condition::current:
        case Condition::sending:
            return "";
        case Condition::notReachable:
            return withReason("The folder cannot be read; syncing begins as soon as it can",
                              status.failure);
        case Condition::notWritable:
            return withReason("The last change could not be written there and will be tried again",
                              status.failure);
        case Condition::tooLarge:
            return "The last change is too large to be synced (more than 1 MiB).";
        case Condition::damaged:
            return "The settings file there is damaged or incomplete. It is left as it is until it "
                   "arrives whole, or until you replace it with this computer’s settings.";
        case Condition::notUsable:
            return "The settings there were written by a program that this one does not "
                   "understand, perhaps a newer version. This computer’s settings stay in force. "
                   "Before your next change replaces the ones there, they are kept in " +
                   status.copiesLocation + ".";
        case Condition::missing:
            return "The settings file there is gone. Syncing goes on when it is back, or when you "
                   "replace it with this computer’s settings.";
    }
    return "";
}

std::string copies(const SharedStoreStatus& status) {
    if (status.copiesPutAside == 0) {
        return "";
    }
    const bool isOne = status.copiesPutAside == 1;
    return std::to_string(status.copiesPutAside) +
           (isOne ? " copy from a collision was put aside"
                  : " copies from collisions were put aside") +
           "; the newest settings are in use.";
}

std::vector<std::string> kept(const SharedStoreStatus& status) {
    std::vector<std::string> sentences;
    for (const auto& [isSo, what] :
         {std::pair{status.hasKeptOwn, "An older change from this computer was kept in "},
          {status.hasKeptOthers, "A change from another computer that was not used was kept in "},
          {status.hasKeptUnusable,
           "Settings from another computer that could not be understood were kept in "}}) {
        if (isSo) {
            sentences.push_back(what + status.copiesLocation + ".");
        }
    }
    return sentences;
}

std::string clocks(const SharedStoreStatus& status) {
    return status.clockLead ? "A computer’s clock is " + duration(*status.clockLead) +
                                  " ahead of this one’s. Please set the clocks right."
                            : "";
}

bool offersStartAnew(const SharedStoreStatus& status) {
    return status.condition == Condition::damaged || status.condition == Condition::missing;
}

}  // namespace lumatile::SyncStatusText
