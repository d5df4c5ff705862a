#include "platform/simulated/SimulatedSharedStore.h"

#include <algorithm>
#include <utility>

#include "platform/simulated/SimulatedSharedFolder.h"
#include "preference_sync/SyncReason.h"

namespace lumatile {

namespace {

using Condition = SharedStoreStatus::Condition;

bool isTooLarge(const SharedSet& set) {
    return std::any_of(set.begin(), set.end(), [](const auto& entry) {
        return entry.second.size() > SharedStore::largestValue;
    });
}

}  // namespace

SimulatedSharedStore::SimulatedSharedStore(SimulatedSharedFolder& sharedFolder,
                                           std::optional<std::string> location, bool isFirstContact)
    : sharedFolder_(sharedFolder), location_(std::move(location)), isFirstContact_(isFirstContact) {
    status_.location = location_.value_or("");
    status_.condition = location_ ? Condition::notReachable : Condition::noLocation;
}

SharedStoreStatus SimulatedSharedStore::status() {
    SharedStoreStatus status = status_;
    if (status.condition == Condition::current && replica_.unsent()) {
        status.condition = Condition::sending;
    } else if (status.condition == Condition::current && replica_.isWithheld()) {
        status.condition = Condition::notUsable;
    }
    status.copiesLocation = status.location + "/copies";
    status.clockLead = clockLead_.seconds();
    return status;
}

void SimulatedSharedStore::heed(SharedSetAdvice advice) {
    advice_ = std::move(advice);
    replica_.heed(advice_);
}

void SimulatedSharedStore::keep(const SharedSet& set) {
    if (location_) {
        sharedFolder_.copies_[*location_].push_back(set);
        status_.hasKeptOwn = true;
        tell(std::nullopt);
    }
}

void SimulatedSharedStore::set(const std::optional<Bytes>& value, std::string_view key) {
    if (!location_) {
        return;
    }
    replica_.set(value, key);
    if (!std::exchange(sendsSoon_, true)) {
        sharedFolder_.runLoop_.post(lifeline_.guard([this] {
            if (sendsSoon_) {
                send();
            }
        }));
    }
}

void SimulatedSharedStore::send() {
    sendsSoon_ = false;
    if (!location_ || !replica_.unsent()) {
        return;
    }
    if (isTooLarge(*replica_.unsent())) {
        replica_.dropUnsent();
        note(Condition::tooLarge);
        tell(code(SyncReason::quotaViolation));
    } else if (isFull_) {
        note(Condition::notWritable);
        tell(code(SyncReason::quotaViolation));
    } else if (isInContact() && hasBeenRead()) {
        note(Condition::sending);
        sharedFolder_.send(*this);
    }
}

void SimulatedSharedStore::arrive(const SharedSet& set, bool isTold) {
    const bool wasRead = hasBeenRead();
    const bool isNews = replica_.found(set);
    clockLead_.note(changeTime(set), sharedFolder_.clock_.wallSeconds());
    note(Condition::current);
    if (replica_.unsent()) {
        send();
    }
    if (!isTold) {
        return;
    }
    if (!wasRead) {
        tell(std::exchange(isFirstContact_, false) ? std::optional(code(SyncReason::initialSync))
                                                   : std::nullopt);
    } else if (isNews) {
        tell(code(SyncReason::server));
    }
}

void SimulatedSharedStore::setLocation(const std::optional<std::string>& location) {
    if (location == location_) {
        return;
    }
    location_ = location;
    isFirstContact_ = true;
    isDamaged_ = false;
    forget();
    tell(code(SyncReason::account));
    sharedFolder_.read(*this);
}

void SimulatedSharedStore::startAnew() {
    if (!location_ || !std::exchange(isDamaged_, false)) {
        return;
    }
    sharedFolder_.places_.erase(*location_);
    arrive({}, false);
    tell(code(SyncReason::initialSync));
}

SharedStoreWatch SimulatedSharedStore::observe(
    std::function<void(const SharedStoreChange&)> changed) {
    return observers_->add(std::move(changed));
}

void SimulatedSharedStore::setOnline(bool online) {
    isOnline_ = online;
    sharedFolder_.read(*this);
}

void SimulatedSharedStore::setFull(bool full) {
    isFull_ = full;
    send();
}

void SimulatedSharedStore::setDamaged(bool damaged) {
    isDamaged_ = damaged;
    if (damaged) {
        note(Condition::damaged);
    }
    sharedFolder_.read(*this);
}

void SimulatedSharedStore::restart() {
    observers_.emplace();
    forget();
    sharedFolder_.read(*this);
}

void SimulatedSharedStore::forget() {
    replica_ = {};
    replica_.heed(advice_);
    clockLead_ = {};
    status_ = {};
    status_.location = location_.value_or("");
    status_.condition = location_ ? Condition::notReachable : Condition::noLocation;
}

void SimulatedSharedStore::tell(std::optional<int> reasonCode) {
    sharedFolder_.runLoop_.post(
        lifeline_.guard([this, reasonCode] { observers_->notify({reasonCode}); }));
}

void SimulatedSharedStore::note(Condition condition) {
    const bool isOther = status_.condition != condition;
    status_.condition = condition;
    if (condition == Condition::current) {
        status_.lastSynced = sharedFolder_.clock_.wallSeconds();
    }
    if (isOther) {
        tell(std::nullopt);
    }
}

}  // namespace lumatile
