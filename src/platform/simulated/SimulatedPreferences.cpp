#include "platform/simulated/SimulatedPreferences.h"

#include <utility>

namespace lumatile {

class SimulatedPreferences::Watch final : public PreferencesWatch {
public:
    explicit Watch(ObserverList<>::Subscription subscription)
        : subscription_(std::move(subscription)) {}

private:
    ObserverList<>::Subscription subscription_;
};

std::unique_ptr<PreferencesWatch> SimulatedPreferences::observe(std::function<void()> changed) {
    return std::make_unique<Watch>(observers_.add(std::move(changed)));
}

void SimulatedPreferences::tell() {
    runLoop_.post(lifeline_.guard([this] { observers_.notify(); }));
}

std::optional<Bytes> SimulatedPreferences::bytes(std::string_view key) { return value<Bytes>(key); }

std::optional<bool> SimulatedPreferences::boolean(std::string_view key) { return value<bool>(key); }

void SimulatedPreferences::setBytes(std::string_view key, const Bytes& value) { set(key, value); }

void SimulatedPreferences::setBoolean(std::string_view key, bool value) { set(key, value); }

void SimulatedPreferences::storeOnDisk(std::string_view key, StoredValue value) {
    disk_.insert_or_assign(std::string(key), value);
    values_.insert_or_assign(std::string(key), std::move(value));
    tell();
}

std::size_t SimulatedPreferences::changes(std::string_view key) const {
    const auto found = changes_.find(key);
    return found == changes_.end() ? 0 : found->second;
}

std::size_t SimulatedPreferences::changes() const {
    std::size_t sum = 0;
    for (const auto& [key, count] : changes_) {
        sum += count;
    }
    return sum;
}

template <typename Wanted>
std::optional<Wanted> SimulatedPreferences::value(std::string_view key) const {
    const auto found = values_.find(key);
    if (found == values_.end()) {
        return std::nullopt;
    }
    const Wanted* wanted = std::get_if<Wanted>(&found->second);
    return wanted ? std::optional<Wanted>(*wanted) : std::nullopt;
}

void SimulatedPreferences::set(std::string_view key, StoredValue value) {
    const auto found = values_.find(key);
    if (found == values_.end() || found->second != value) {
        values_.insert_or_assign(std::string(key), std::move(value));
        noteChange(key);
    } else if (disk_ == values_) {
        return;
    }
    store();
}

void SimulatedPreferences::remove(std::string_view key) {
    const auto found = values_.find(key);
    if (found != values_.end()) {
        values_.erase(found);
        noteChange(key);
    } else if (disk_ == values_) {
        return;
    }
    store();
}

void SimulatedPreferences::noteChange(std::string_view key) {
    ++changes_[std::string(key)];
    tell();
}

void SimulatedPreferences::store() {
    if (trouble_ && trouble_->canSetAside) {
        log_.write("Preferences", trouble_->line);
        return;
    }
    if (isDiskFull_) {
        setTrouble(PreferencesTrouble{"could not be written, no space left on the disk"});
        log_.write("Preferences", trouble_->line);
        return;
    }
    disk_ = values_;
    setTrouble(std::nullopt);
}

void SimulatedPreferences::putInTheWay(std::string line) {
    values_.clear();
    disk_.clear();
    setTrouble(PreferencesTrouble{std::move(line), true});
}

void SimulatedPreferences::setAside() {
    if (trouble_ && trouble_->canSetAside) {
        setTrouble(std::nullopt);
        store();
    }
}

void SimulatedPreferences::setTrouble(std::optional<PreferencesTrouble> trouble) {
    if (trouble != trouble_) {
        trouble_ = std::move(trouble);
        troubleObservers_.notify();
    }
}

}  // namespace lumatile
