#pragma once

#include <limits>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "preference_sync/KeyValueStoring.h"

namespace lumatile {

/// A store in memory that writes down what it is asked to change, and that can stop in the middle,
/// as the end of the process does. Two stores that share one journal also show the order between
/// them.
class RecordedStore final : public KeyValueStoring {
public:
    struct Journal {
        std::vector<std::string> writes;  ///< "store key", or "store" for `synchronize`.
        /// What comes after so many of them no longer happens.
        std::size_t limit = std::numeric_limits<std::size_t>::max();
    };

    RecordedStore(std::string name, Journal& journal) : name_(std::move(name)), journal_(journal) {}

    std::optional<Bytes> data(std::string_view key) override {
        const auto found = values.find(key);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }

    void set(const std::optional<Bytes>& value, std::string_view key) override {
        if (!happens(name_ + " " + std::string(key))) {
            return;
        }
        if (value) {
            values.insert_or_assign(std::string(key), *value);
        } else {
            values.erase(std::string(key));
        }
    }

    void synchronize() override { happens(name_); }

    std::map<std::string, Bytes, std::less<>> values;

private:
    bool happens(std::string write) {
        if (journal_.writes.size() >= journal_.limit) {
            return false;
        }
        journal_.writes.push_back(std::move(write));
        return true;
    }

    std::string name_;
    Journal& journal_;
};

}  // namespace lumatile
