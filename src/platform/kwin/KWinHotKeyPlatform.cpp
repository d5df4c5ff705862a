#include "platform/kwin/KWinHotKeyPlatform.h"

#include <algorithm>
#include <utility>

#include "platform/keyboard/KeyTable.h"
#include "platform/kwin/KWinKey.h"

namespace lumatile {

namespace {

constexpr double betweenAttempts = 1;  // Seconds.

}  // namespace

KWinHotKeyPlatform::KWinHotKeyPlatform(KWinChannel& channel, RunLoop& runLoop, SymbolAt symbolAt)
    : channel_(channel),
      runLoop_(runLoop),
      symbolAt_(std::move(symbolAt)),
      states_(channel.observeState([this] {
          // The channel is in the middle of something.
          runLoop_.post(lifeline_.guard([this] { followService(); }));
      })) {}

KWinHotKeyPlatform::~KWinHotKeyPlatform() {
    for (auto& [action, taken] : taken_) {
        taken.isWanted = false;
    }
    giveUnwantedBack();
}

void KWinHotKeyPlatform::installHandler(Handler handler) { handler_ = std::move(handler); }

std::string KWinHotKeyPlatform::holder(const KeyCombination& combination) {
    for (const Refused& each : refused_) {
        if (each.keyCode == combination.keyCode && each.modifiers == combination.modifiers) {
            return each.holder;
        }
    }
    return {};
}

void KWinHotKeyPlatform::describe(HotKeyID id, const HotKeyPurpose& purpose) {
    purposes_[id.id] = purpose;
}

std::optional<HotKeyReference> KWinHotKeyPlatform::registerHotKey(std::uint32_t keyCode,
                                                                  std::uint32_t modifiers,
                                                                  HotKeyID id) {
    Registration registration{keyCode, modifiers, id, {}, {}};
    const auto purpose = purposes_.find(id.id);
    if (purpose != purposes_.end()) {
        registration.action = std::move(purpose->second.key);
        registration.title = std::move(purpose->second.title);
        purposes_.erase(purpose);
    } else {
        registration.action = std::to_string(keyCode) + "-" + std::to_string(modifiers);
        registration.title = registration.action;
    }
    followService();
    // Without service or keyboard there is nothing that could refuse; it is taken as soon as there
    // is.
    if (channel_.connection() != nullptr && symbolAt_(keyCode) && !take(registration)) {
        return std::nullopt;
    }
    const HotKeyReference reference = nextReference_++;
    registrations_.emplace(reference, std::move(registration));
    return reference;
}

void KWinHotKeyPlatform::unregisterHotKey(HotKeyReference reference) {
    const auto found = registrations_.find(reference);
    if (found == registrations_.end()) {
        return;
    }
    const auto taken = taken_.find(found->second.action);
    if (taken != taken_.end()) {
        taken->second.isWanted = false;
    }
    registrations_.erase(found);
    refused_.clear();
    // All are given back and most taken again whenever one has changed; the service writes a file
    // for each.
    giveUnwantedBackLater();
}

std::optional<std::int32_t> KWinHotKeyPlatform::keyOf(const Registration& registration) const {
    const auto symbol = symbolAt_(registration.keyCode);
    return symbol ? KWinKey::of(*symbol, registration.modifiers) : std::nullopt;
}

bool KWinHotKeyPlatform::take(const Registration& registration) {
    const auto key = keyOf(registration);
    if (!key) {
        refused_.push_back({registration.keyCode, registration.modifiers, {}});
        return false;
    }
    const auto before = taken_.find(registration.action);
    if (before != taken_.end() && before->second.key == *key &&
        before->second.title == registration.title) {
        before->second.isWanted = true;
        return true;
    }
    if (retry_) {
        return true;  // It does not answer just now, and each question holds the program up.
    }
    // One that is about to be given back is not in the way.
    giveUnwantedBack();
    KWinGlobalShortcuts shortcuts(*channel_.connection());
    if (const std::optional<std::string> holder = shortcuts.holder(*key)) {
        refused_.push_back({registration.keyCode, registration.modifiers, *holder});
        return false;
    }
    using Taking = KWinGlobalShortcuts::Taking;
    const Taking taking = shortcuts.take(registration.action, registration.title, *key);
    if (taking == Taking::silent) {
        // KWin is busy, as at login. Nobody has refused anything.
        retry_ = runLoop_.repeat(betweenAttempts, [this] { takeMissing(); });
        return true;
    }
    if (taking == Taking::refused) {
        shortcuts.giveBack(registration.action);
        refused_.push_back({registration.keyCode, registration.modifiers, {}});
        return false;
    }
    taken_[registration.action] = {*key, registration.title, true};
    return true;
}

void KWinHotKeyPlatform::takeMissing() {
    retry_.reset();
    if (channel_.connection() == nullptr) {
        return;  // Everything is taken anew when there is one.
    }
    for (const auto& [reference, registration] : registrations_) {
        if (!taken_.contains(registration.action)) {
            take(registration);
        }
    }
}

void KWinHotKeyPlatform::giveUnwantedBackLater() {
    if (!std::exchange(isGivingBack_, true)) {
        runLoop_.post(lifeline_.guard([this] { giveUnwantedBack(); }));
    }
}

void KWinHotKeyPlatform::giveUnwantedBack() {
    isGivingBack_ = false;
    LoneBusConnection* const bus = channel_.connection();
    std::erase_if(taken_, [bus](const auto& each) {
        if (!each.second.isWanted && bus != nullptr) {
            KWinGlobalShortcuts(*bus).giveBack(each.first);
        }
        return !each.second.isWanted;
    });
}

/// Hears the presses on the connection that there is now; on a new one everything is taken anew.
void KWinHotKeyPlatform::followService() {
    LoneBusConnection* const bus = channel_.connection();
    if (bus == std::exchange(listening_, bus) || bus == nullptr) {
        return;
    }
    bus->listen({bus->peer(), KWinGlobalShortcuts::path, KWinGlobalShortcuts::interface,
                 KWinGlobalShortcuts::pressed},
                lifeline_.guard([this](GVariant* arguments) { notePress(arguments); }));
    bus->listen({bus->peer(), KWinGlobalShortcuts::servicePath,
                 KWinGlobalShortcuts::serviceInterface, KWinGlobalShortcuts::changed},
                lifeline_.guard([this](GVariant* arguments) { noteChange(arguments); }));
    taken_.clear();
    refused_.clear();
    for (const auto& [reference, registration] : registrations_) {
        take(registration);
    }
}

void KWinHotKeyPlatform::followKeyboard() {
    if (channel_.connection() == nullptr) {
        return;
    }
    for (auto& [action, taken] : taken_) {
        taken.isWanted = false;
    }
    refused_.clear();
    for (const auto& [reference, registration] : registrations_) {
        take(registration);
    }
    giveUnwantedBack();
}

void KWinHotKeyPlatform::notePress(GVariant* arguments) {
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(ssx)")) == 0) {
        return;
    }
    const char* action = nullptr;
    g_variant_get(arguments, "(&s&sx)", nullptr, &action, nullptr);
    channel_.inTurn(lifeline_.guard([this, name = std::string(action)] {
        // Somebody may be waiting for a write just now.
        runLoop_.post(lifeline_.guard([this, name] { deliver(name); }));
    }));
}

void KWinHotKeyPlatform::noteChange(GVariant* arguments) {
    const auto change = KWinGlobalShortcuts::changeIn(arguments);
    if (change) {
        runLoop_.post(
            lifeline_.guard([this, change = *change] { reassign(change.action, change.key); }));
    }
}

/// The user has given an action another combination on Plasma's page, or taken it away.
void KWinHotKeyPlatform::reassign(const std::string& action, std::int32_t key) {
    const auto taken = taken_.find(action);
    const auto found =
        std::find_if(registrations_.begin(), registrations_.end(),
                     [&action](const auto& each) { return each.second.action == action; });
    if (taken == taken_.end() || taken->second.key == key || found == registrations_.end() ||
        !reassigned_) {
        return;
    }
    taken->second.key = key;
    const HotKeyID id = found->second.id;
    if (key == 0) {
        reassigned_(id, std::nullopt);
        return;
    }
    for (const PhysicalKey& physical : KeyTable::keys()) {
        const auto symbol = symbolAt_(physical.virtualKeyCode);
        if (symbol && KWinKey::isIn(key, *symbol)) {
            reassigned_(id, KeyCombination{physical.virtualKeyCode, KWinKey::modifiersOf(key)});
            return;
        }
    }
    // A key that no shortcut of this program can name: Plasma's page shows again what is so.
    take(found->second);
}

void KWinHotKeyPlatform::deliver(const std::string& action) {
    const auto found =
        std::find_if(registrations_.begin(), registrations_.end(),
                     [&action](const auto& each) { return each.second.action == action; });
    if (found != registrations_.end() && handler_) {
        handler_(found->second.id);
    }
}

}  // namespace lumatile
