#include "hotkeys/HotkeyService.h"

#include <cstdlib>
#include <limits>
#include <optional>
#include <utility>

namespace lumatile {

namespace {

/// The status of an event that was handled. Every press counts as handled, also one that no action
/// belongs to, so that nobody else acts on it.
constexpr std::int32_t noError = 0;

}  // namespace

HotkeyService::HotkeyService(HotKeyPlatform& platform) : platform_(platform) {}

HotkeyService::~HotkeyService() { unregisterAll(); }

std::uint32_t HotkeyService::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                            Action action, const HotKeyPurpose& purpose) {
    if (!installed_) {
        installed_ = true;
        platform_.installHandler([perform = lifeline_.guard([this](std::uint32_t id) {
            perform(id);
        })](std::optional<HotKeyID> pressed) {
            if (pressed) {
                perform(pressed->id);
            }
            return noError;
        });
        platform_.installReassigned(
            [reassign = lifeline_.guard(
                 [this](HotKeyID id, const std::optional<KeyCombination>& combination) {
                     // Copies, since who is told may register anew and set itself again.
                     const auto reassigned = onReassigned;
                     if (reassigned && holds(id.id)) {
                         reassigned(id.id, combination);
                     }
                 })](HotKeyID id, const std::optional<KeyCombination>& combination) {
                reassign(id, combination);
            });
        platform_.installAvailabilityChanged(lifeline_.guard([this] {
            const auto changed = onAvailabilityChanged;
            if (changed) {
                changed();
            }
        }));
    }
    if (nextID_ == std::numeric_limits<std::uint32_t>::max()) {
        std::abort();  // Four thousand million registrations: the counting itself is broken.
    }
    const std::uint32_t id = nextID_++;
    handlers_[id] = std::move(action);
    if (!purpose.key.empty()) {
        platform_.describe(HotKeyID{signature, id}, purpose);
    }
    if (const auto reference =
            platform_.registerHotKey(keyCode, modifiers, HotKeyID{signature, id})) {
        refs_[id] = *reference;
    }
    return id;
}

void HotkeyService::perform(std::uint32_t id) {
    const auto found = handlers_.find(id);
    if (found != handlers_.end()) {
        // A copy, since an action may register anew and so change the map.
        const Action called = found->second;
        called();
    }
}

void HotkeyService::unregisterAll() {
    const auto refs = std::exchange(refs_, {});
    for (const auto& [id, reference] : refs) {
        platform_.unregisterHotKey(reference);
        handlers_.erase(id);
    }
}

}  // namespace lumatile
