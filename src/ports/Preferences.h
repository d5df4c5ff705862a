#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/ObserverList.h"

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

/// Why the settings are not as they are stored, or not stored as they are.
struct PreferencesTrouble {
    std::string line;          ///< One sentence, for the log and for the user: where, what and why.
    bool canSetAside = false;  ///< What lies there is no settings file, and is in the way of one.

    bool operator==(const PreferencesTrouble&) const = default;
};

/// Port: the user's stored settings, typed values under fixed keys. A reader asks for the type that
/// it needs; a value of another type reads as absent and stays stored.
class Preferences {
public:
    virtual ~Preferences() = default;

    virtual std::optional<Bytes> bytes(std::string_view key) = 0;
    virtual std::optional<bool> boolean(std::string_view key) = 0;

    /// Sets a value, which costs next to nothing: values are stored within a second, those that are
    /// set together in one go, and at the latest when the adapter is destroyed. While the disk
    /// refuses them they hold in memory, the adapter tries again now and then, and what the disk
    /// held stays untouched.
    virtual void setBytes(std::string_view key, const Bytes& value) = 0;
    virtual void setBoolean(std::string_view key, bool value) = 0;

    /// Takes `key` out of the store, whatever the type of its value; under the same rules.
    virtual void remove(std::string_view key) = 0;

    /// Calls `changed` from the run loop after values may have changed, whichever process changed
    /// them; now and then also when none has.
    [[nodiscard]] virtual std::unique_ptr<PreferencesWatch> observe(
        std::function<void()> changed) = 0;

    /// Absent while all that was set is stored, or about to be.
    virtual std::optional<PreferencesTrouble> trouble() const = 0;

    /// Calls `changed` when the trouble has changed.
    virtual ObserverList<>::Subscription observeTrouble(std::function<void()> changed) = 0;

    /// Moves what lies in the way of the settings file aside, and stores what was set meanwhile.
    /// Nothing where nothing is in the way.
    virtual void setAside() = 0;
};

}  // namespace lumatile
