#pragma once

#include <optional>

#include "ports/SharedStore.h"
#include "preference_sync/KeyValueStoring.h"
#include "preference_sync/SyncReason.h"

namespace lumatile {

/// The shared side: what all of the user's computers see. A set that cannot be decoded is withheld;
/// see `SharedStore::heed`.
class UbiquitousStore final : public KeyValueStoring {
public:
    /// @param store outlives this
    explicit UbiquitousStore(SharedStore& store) : store_(store) {}

    std::optional<Bytes> data(std::string_view key) override { return store_.data(key); }
    void set(const std::optional<Bytes>& value, std::string_view key) override {
        store_.set(value, key);
    }
    void synchronize() override { store_.synchronize(); }

    /// Why `change` was told; none when it does not say, or not in a way that is known.
    static std::optional<SyncReason> reason(const SharedStoreChange& change);

private:
    SharedStore& store_;
};

}  // namespace lumatile
