#include "platform/simulated/SimulatedHotKeys.h"

#include <algorithm>
#include <utility>

namespace lumatile {

void SimulatedHotKeys::installHandler(Handler handler) {
    handler_ = std::move(handler);
    ++installations_;
}

std::optional<HotKeyReference> SimulatedHotKeys::registerHotKey(std::uint32_t keyCode,
                                                                std::uint32_t modifiers,
                                                                HotKeyID id) {
    const KeyCombination combination{keyCode, modifiers};
    if (taken_.contains(combination)) {
        ++refusals_;
        return std::nullopt;
    }
    registrations_.emplace(++lastReference_, Registration{combination, id});
    return lastReference_;
}

void SimulatedHotKeys::unregisterHotKey(HotKeyReference reference) {
    if (registrations_.erase(reference) == 0) {
        ++strayUnregistrations_;
    }
}

std::string SimulatedHotKeys::holder(const KeyCombination& combination) {
    const auto found = taken_.find(combination);
    return found != taken_.end() ? found->second : std::string();
}

void SimulatedHotKeys::describe(HotKeyID id, const HotKeyPurpose& purpose) {
    purposes_[id.id] = purpose;
}

void SimulatedHotKeys::reassign(const KeyCombination& combination,
                                std::optional<KeyCombination> to) {
    for (const auto& [reference, registration] : registrations_) {
        if (registration.combination == combination && reassigned_) {
            runLoop_.post([this, id = registration.id, to] { reassigned_(id, to); });
        }
    }
    runLoop_.settle();
}

void SimulatedHotKeys::tellAvailability() {
    if (availabilityChanged_) {
        runLoop_.post([this] { availabilityChanged_(); });
    }
    runLoop_.settle();
}

std::string SimulatedHotKeys::listed(const KeyCombination& combination) const {
    for (const auto& [reference, registration] : registrations_) {
        const auto purpose = purposes_.find(registration.id.id);
        if (registration.combination == combination && purpose != purposes_.end()) {
            return purpose->second.title;
        }
    }
    return {};
}

KeyReceiver SimulatedHotKeys::keyDown(const KeyCombination& combination) {
    const bool isRepeat = !down_.insert(combination).second;
    auto receiver = KeyReceiver::frontWindow;
    for (const auto& [reference, registration] : registrations_) {
        if (registration.combination != combination) {
            continue;
        }
        receiver = KeyReceiver::thisProgram;
        if (!isRepeat) {
            runLoop_.post([this, id = registration.id] {
                deliver(areEventsUnreadable_ ? std::nullopt : std::optional(id));
            });
        }
    }
    runLoop_.settle();
    if (receiver == KeyReceiver::frontWindow && taken_.contains(combination)) {
        receiver = KeyReceiver::otherProgram;
    }
    return receiver;
}

KeyReceiver SimulatedHotKeys::press(const KeyCombination& combination) {
    const KeyReceiver receiver = keyDown(combination);
    keyUp(combination);
    return receiver;
}

void SimulatedHotKeys::deliver(std::optional<HotKeyID> id) {
    // A copy: an action may install another handler.
    const Handler handler = handler_;
    if (handler) {
        lastStatus_ = handler(id);
    }
}

std::vector<KeyCombination> SimulatedHotKeys::registered() const {
    std::vector<KeyCombination> result;
    result.reserve(registrations_.size());
    for (const auto& [reference, registration] : registrations_) {
        result.push_back(registration.combination);
    }
    std::sort(result.begin(), result.end());
    return result;
}

}  // namespace lumatile
