#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace lumatile {

using Bytes = std::string;

/// Being told of changes; destroying it ends that.
class PreferencesWatch {
public:
    PreferencesWatch() = default;
    PreferencesWatch(const PreferencesWatch&) = delete;
    PreferencesWatch& operator=(const PreferencesWatch&) = delete;
    virtual ~PreferencesWatch() = default;
};

/// Port: the user's stored settings, typed values under fixed keys. A reader asks for the type that
/// it needs; a value of another type reads as absent and stays stored.
class Preferences {
public:
    virtual ~Preferences() = default;

    virtual std::optional<Bytes> bytes(std::string_view key) = 0;
    virtual std::optional<bool> boolean(std::string_view key) = 0;

    /// Stores a value at once. When the disk refuses it, the adapter logs one line, answers the new
    /// value from memory, and tries again at the next change; what the disk held stays untouched.
    virtual void setBytes(std::string_view key, const Bytes& value) = 0;
    virtual void setBoolean(std::string_view key, bool value) = 0;

    /// Takes `key` out of the store, whatever the type of its value; under the same rules.
    virtual void remove(std::string_view key) = 0;

    /// Calls `changed` from the run loop after values may have changed, whichever process changed
    /// them; now and then also when none has.
    [[nodiscard]] virtual std::unique_ptr<PreferencesWatch> observe(
        std::function<void()> changed) = 0;
};

}  // namespace lumatile
