#include "Lumatile/SyncStatusText.h"

namespace lumatile::SyncStatusText {

namespace {

using Condition = SharedStoreStatus::Condition;

std::string withReason(const std::string& sentence, const std::string& reason) {
    return reason.empty() ? sentence + "." : sentence + " (" + reason + ").";
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

bool offersStartAnew(const SharedStoreStatus& status) {
    return status.condition == Condition::damaged || status.condition == Condition::missing;
}

}  // namespace lumatile::SyncStatusText
