#include "preference_sync/SharedSetReplica.h"

#include <string>
#include <utility>

namespace lumatile {

void SharedSetReplica::heed(SharedSetAdvice advice) {
    advice_ = std::move(advice);
    if (!accepted_ || isUsable(*accepted_) == !isWithheld_) {
        return;
    }
    isWithheld_ = !isWithheld_;
    usable_ = isWithheld_ ? SharedSet{} : *accepted_;
}

std::optional<Bytes> SharedSetReplica::data(std::string_view key) const {
    const SharedSet& set = unsent_ ? *unsent_ : usable_;
    const auto value = set.find(key);
    return value == set.end() ? std::nullopt : std::optional(value->second);
}

void SharedSetReplica::set(const std::optional<Bytes>& value, std::string_view key) {
    if (!unsent_) {
        unsent_ = usable_;
    }
    if (value) {
        unsent_->insert_or_assign(std::string(key), *value);
    } else if (const auto place = unsent_->find(key); place != unsent_->end()) {
        unsent_->erase(place);
    }
}

bool SharedSetReplica::replacesUnused() const {
    if (!unsent_ || !accepted_ || accepted_->empty()) {
        return false;
    }
    return isWithheld_ || (!isOwn_ && advice_.madeOn && changeTime(*accepted_) != advice_.madeOn());
}

bool SharedSetReplica::found(const SharedSet& set) {
    const bool isKnown = accepted_ == set;
    accepted_ = set;
    if (unsent_ == set) {
        sent(set);
        return false;
    }
    // An unsent set stands for a change of the user's, so against what lay there when it was made
    // it counts whatever the clocks say.
    if (isKnown) {
        return false;
    }
    isOwn_ = false;
    const bool isLater = !unsent_ || changeTime(set) > changeTime(*unsent_);
    isWithheld_ = !isUsable(set);
    if (isWithheld_) {
        if (unsent_ && isLater) {
            // Nothing older is written over it, and nothing else comes of it here.
            usable_ = *std::exchange(unsent_, std::nullopt);
        }
        return false;
    }
    usable_ = set;
    if (isLater) {
        unsent_.reset();
    }
    return isLater;
}

void SharedSetReplica::sent(const SharedSet& set) {
    accepted_ = set;
    usable_ = set;
    isOwn_ = true;
    isWithheld_ = false;
    if (unsent_ == set) {
        unsent_.reset();
    }
}

}  // namespace lumatile
