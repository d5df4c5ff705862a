#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "base/Lifeline.h"
#include "base/ObserverList.h"
#include "ports/Preferences.h"
#include "ports/RunLoop.h"
#include "ports/SystemLog.h"

namespace lumatile {

/// What can lie under a key, some of it of no use to this program.
using StoredValue = std::variant<Bytes, bool, std::int64_t>;

/// The user's stored settings: what the program sees, and the disk below it, which can refuse.
class SimulatedPreferences final : public Preferences {
public:
    using Values = std::map<std::string, StoredValue, std::less<>>;

    /// Both outlive the preferences.
    SimulatedPreferences(SystemLog& log, RunLoop& runLoop) : log_(log), runLoop_(runLoop) {}

    std::optional<Bytes> bytes(std::string_view key) override;
    std::optional<bool> boolean(std::string_view key) override;
    void setBytes(std::string_view key, const Bytes& value) override;
    void setBoolean(std::string_view key, bool value) override;
    void remove(std::string_view key) override;
    [[nodiscard]] std::unique_ptr<PreferencesWatch> observe(std::function<void()> changed) override;

    std::optional<PreferencesTrouble> trouble() const override { return trouble_; }
    ObserverList<>::Subscription observeTrouble(std::function<void()> changed) override {
        return troubleObservers_.add(std::move(changed));
    }
    void setAside() override;

    /// Puts something in the way of the settings file. Nothing is stored from now on, and nothing
    /// is read.
    void putInTheWay(std::string line);

    /// Puts a value on the disk as something else than this program would: an editor, an older
    /// version, another process. Seen at once; whoever observes is told from the run loop.
    void storeOnDisk(std::string_view key, StoredValue value);

    /// From now on the disk takes nothing, or takes it again: with the next change.
    void setDiskFull(bool full) { isDiskFull_ = full; }

    /// What a program started now would find.
    const Values& disk() const { return disk_; }

    /// Forgets what never reached the disk, as the end of the process does.
    void restart() { values_ = disk_; }

    /// How often the program changed the value under `key` to another one.
    std::size_t changes(std::string_view key) const;

    /// How often the program changed any value.
    std::size_t changes() const;

private:
    template <typename Wanted>
    std::optional<Wanted> value(std::string_view key) const;
    void set(std::string_view key, StoredValue value);
    void noteChange(std::string_view key);
    void store();
    void setTrouble(std::optional<PreferencesTrouble> trouble);

    class Watch;

    void tell();

    SystemLog& log_;
    RunLoop& runLoop_;
    ObserverList<> observers_;
    Values values_;
    Values disk_;
    std::map<std::string, std::size_t, std::less<>> changes_;
    bool isDiskFull_ = false;
    std::optional<PreferencesTrouble> trouble_;
    ObserverList<> troubleObservers_;
    Lifeline lifeline_;
};

}  // namespace lumatile
