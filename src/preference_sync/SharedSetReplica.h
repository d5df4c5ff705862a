#pragma once

#include <optional>
#include <string_view>

#include "preference_sync/SharedSet.h"
#include "preference_sync/SharedSetAdvice.h"

namespace lumatile {

/// One computer's view of the set at a location: what was found there last, and what this computer
/// has changed since and not brought there yet. It decides which of two sets counts, always between
/// whole ones; how they travel is its owner's business.
class SharedSetReplica {
public:
    /// Goes by that advice from now on, for what was found last as well.
    void heed(SharedSetAdvice advice);

    /// Whether the location was ever read; until then nothing is known of what lies there.
    bool hasBeenRead() const { return accepted_.has_value(); }

    std::optional<Bytes> data(std::string_view key) const;

    /// Changes this computer's set, beginning with what was found last and can be used.
    void set(const std::optional<Bytes>& value, std::string_view key);

    /// This computer's set while the location lacks it.
    const std::optional<SharedSet>& unsent() const { return unsent_; }

    /// What was found last, also when it cannot be used; absent before the first time.
    const std::optional<SharedSet>& accepted() const { return accepted_; }

    /// Whether what was found last cannot be used.
    bool isWithheld() const { return isWithheld_; }

    /// Whether the unsent set takes the place of a set that was not used here: one that another
    /// computer made meanwhile, or one that is withheld. It has to be kept elsewhere then.
    bool replacesUnused() const;

    /// Takes note of what lies at the location. Where both sides have changed, the set that was
    /// changed later counts; at the same time, this computer's.
    /// @return whether `data` now answers what another computer has written
    bool found(const SharedSet& set);

    /// Takes note that `set`, once the unsent one, lies at the location now.
    void sent(const SharedSet& set);

    /// Gives up what this computer has changed and could not bring there.
    void dropUnsent() { unsent_.reset(); }

private:
    bool isUsable(const SharedSet& set) const { return !advice_.isUsable || advice_.isUsable(set); }

    SharedSetAdvice advice_;
    std::optional<SharedSet> accepted_;
    SharedSet usable_;  ///< What was found last and can be used.
    std::optional<SharedSet> unsent_;
    bool isWithheld_ = false;
    bool isOwn_ = false;  ///< What was found last is what this computer has sent.
};

}  // namespace lumatile
