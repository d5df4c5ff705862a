#pragma once

#include "ports/Preferences.h"
#include "preference_sync/KeyValueStoring.h"

namespace lumatile {

/// This computer's side of what is shared: the user's stored settings.
class UserDefaultsStore final : public KeyValueStoring {
public:
    /// @param defaults outlives the store
    explicit UserDefaultsStore(Preferences& defaults) : defaults_(defaults) {}

    std::optional<Bytes> data(std::string_view key) override { return defaults_.bytes(key); }
    void set(const std::optional<Bytes>& value, std::string_view key) override;

    /// Nothing: settings that are set are stored soon.
    void synchronize() override {}

private:
    Preferences& defaults_;
};

}  // namespace lumatile
