#include "preference_sync/SharedSetReplica.h"

#include <string>

namespace lumatile {

std::optional<Bytes> SharedSetReplica::data(std::string_view key) const {
    const std::optional<SharedSet>& set = unsent_ ? unsent_ : accepted_;
    if (!set) {
        return std::nullopt;
    }
    const auto value = set->find(key);
    return value == set->end() ? std::nullopt : std::optional(value->second);
}

void SharedSetReplica::set(const std::optional<Bytes>& value, std::string_view key) {
    if (!unsent_) {
        unsent_ = accepted_.value_or(SharedSet{});
    }
    if (value) {
        unsent_->insert_or_assign(std::string(key), *value);
    } else if (const auto place = unsent_->find(key); place != unsent_->end()) {
        unsent_->erase(place);
    }
}

bool SharedSetReplica::found(const SharedSet& set) {
    const bool isKnown = accepted_ == set;
    accepted_ = set;
    if (!unsent_) {
        return !isKnown;
    }
    if (*unsent_ == set) {
        unsent_.reset();
        return false;
    }
    // An unsent set stands for a change of the user's, so against what lay there when it was made
    // it counts whatever the clocks say.
    if (isKnown || !(changeTime(set) > changeTime(*unsent_))) {
        return false;
    }
    unsent_.reset();
    return true;
}

void SharedSetReplica::sent(const SharedSet& set) {
    accepted_ = set;
    if (unsent_ == set) {
        unsent_.reset();
    }
}

}  // namespace lumatile
