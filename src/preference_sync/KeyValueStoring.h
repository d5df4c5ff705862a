#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumatile {

using Bytes = std::string;

/// Port: raw bytes under keys, of which one computer's settings and the shared ones are two.
class KeyValueStoring {
public:
    virtual ~KeyValueStoring() = default;

    virtual std::optional<Bytes> data(std::string_view key) = 0;

    /// Stores `value` under `key`; an absent one takes the key out of the store.
    virtual void set(const std::optional<Bytes>& value, std::string_view key) = 0;

    /// Asks the store to bring its changes to where others see them.
    virtual void synchronize() = 0;
};

}  // namespace lumatile
