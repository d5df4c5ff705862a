#include "platform/kwin/KWinHotKeyPlatform.h"

#include <algorithm>
#include <utility>

#include "platform/keyboard/KeyTable.h"
#include "platform/kwin/KWinKey.h"

namespace lumatile {

namespace {

// Seconds. A service that has just failed to answer is not pressed, and one that is not there at
// all costs next to nothing.
constexpr double firstRetry = 1;
constexpr double longestRetry = 30;

// Seconds. The service tells of what the user gives away on Plasma's page, not of what a program
// gives back.
constexpr double betweenLooks = 10;

}  // namespace

KWinHotKeyPlatform::KWinHotKeyPlatform(KWinChannel& channel, RunLoop& runLoop, SymbolAt symbolAt)
    : channel_(channel),
      runLoop_(runLoop),
      symbolAt_(std::move(symbolAt)),
      retryAfter_(firstRetry),
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
        if (each.combination == combination) {
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
    const KeyCombination combination{keyCode, modifiers};
    std::erase_if(refused_, [&](const Refused& each) { return each.combination == combination; });
    if (channel_.connection() != nullptr ? !take(registration) : !takeUnasked(registration)) {
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

bool KWinHotKeyPlatform::take(const Registration& registration) {
    const auto symbol = symbolAt_(registration.keyCode);
    if (!symbol) {
        return takeUnasked(registration);  // The keyboard is not known yet.
    }
    const auto key = KWinKey::of(*symbol, registration.modifiers);
    if (!key) {
        noteRefused(registration, 0, {});
        return false;
    }
    const auto present = taken_.find(registration.action);
    if (present != taken_.end() && present->second.key == *key &&
        present->second.title == registration.title) {
        present->second.isWanted = true;
        return true;
    }
    if (isSilent_) {
        return takeUnasked(registration);  // Each question would hold the program up.
    }
    // One that is about to be given back is not in the way.
    giveUnwantedBack(*key);
    if (isTakenForAnother(registration, *key)) {
        noteRefused(registration, 0, {});
        return false;
    }
    using Taking = KWinGlobalShortcuts::Taking;
    KWinGlobalShortcuts shortcuts(*channel_.connection());
    KWinGlobalShortcuts::Outcome outcome =
        shortcuts.take(registration.action, registration.title, *key);
    if (outcome.taking == Taking::silent) {
        const bool isHeld = takeUnasked(registration);
        // It may still be given.
        taken_[registration.action] = {0, registration.title, isHeld};
        if (!isHeld) {
            giveUnwantedBackLater();
        }
        isSilent_ = true;
        awaitAnswer(*key);
        return isHeld;
    }
    if (outcome.taking == Taking::refused) {
        const auto kept = taken_.find(registration.action);
        if (kept != taken_.end()) {
            kept->second.isWanted = false;
            giveUnwantedBackLater();
        }
        noteRefused(registration, *key, std::move(outcome.holder));
        return false;
    }
    taken_[registration.action] = {*key, registration.title, true};
    lastRefused_.erase({registration.keyCode, registration.modifiers});
    return true;
}

/// While nobody can be asked, everything counts as held but what was refused the last time; all is
/// taken as soon as somebody can.
bool KWinHotKeyPlatform::takeUnasked(const Registration& registration) {
    const auto last = lastRefused_.find({registration.keyCode, registration.modifiers});
    if (last == lastRefused_.end()) {
        return true;
    }
    noteRefused(registration, 0, last->second);
    return false;
}

bool KWinHotKeyPlatform::isTakenForAnother(const Registration& registration,
                                           std::int32_t key) const {
    return std::any_of(taken_.begin(), taken_.end(), [&](const auto& each) {
        return each.second.key == key && each.first != registration.action;
    });
}

void KWinHotKeyPlatform::noteRefused(const Registration& registration, std::int32_t key,
                                     std::string holder) {
    const KeyCombination combination{registration.keyCode, registration.modifiers};
    lastRefused_[combination] = holder;
    refused_.push_back({combination, std::move(holder), key});
    if (!look_) {
        look_ = runLoop_.repeat(betweenLooks, [this] { lookAgain(); });
    }
}

/// Everything that counts as held, where the service or the keyboard is another one.
void KWinHotKeyPlatform::takeAnew() {
    bool mayDiffer = !std::exchange(refused_, {}).empty();
    for (const auto& [reference, registration] : registrations_) {
        mayDiffer |= !take(registration);
    }
    if (mayDiffer) {
        tellAvailability();
    }
}

void KWinHotKeyPlatform::awaitAnswer(std::int32_t key) {
    retry_.reset();
    if (channel_.connection() == nullptr) {
        return;  // Everything is taken anew when there is one.
    }
    KWinGlobalShortcuts(*channel_.connection())
        .askWhetherFree(key, lifeline_.guard([this, key](std::optional<bool> answer) {
            // The connection is in the middle of this.
            runLoop_.post(lifeline_.guard(
                [this, key, isAnswer = answer.has_value()] { noteAnswer(key, isAnswer); }));
        }));
}

void KWinHotKeyPlatform::noteAnswer(std::int32_t key, bool isAnswer) {
    if (!isSilent_ || channel_.connection() == nullptr) {
        return;
    }
    if (!isAnswer) {
        retry_ = runLoop_.repeat(retryAfter_, [this, key] { awaitAnswer(key); });
        retryAfter_ = std::min(retryAfter_ * 2, longestRetry);
        return;
    }
    isSilent_ = false;
    retryAfter_ = firstRetry;
    takeAnew();
}

void KWinHotKeyPlatform::lookAgainLater() {
    if (!refused_.empty() && !std::exchange(isLookingAgain_, true)) {
        runLoop_.post(lifeline_.guard([this] { lookAgain(); }));
    }
}

/// Whether what was refused is free now.
void KWinHotKeyPlatform::lookAgain() {
    isLookingAgain_ = false;
    if (refused_.empty()) {
        look_.reset();
        return;
    }
    if (channel_.connection() == nullptr || isSilent_) {
        return;
    }
    KWinGlobalShortcuts shortcuts(*channel_.connection());
    for (const Refused& each : refused_) {
        if (each.key != 0) {
            shortcuts.askWhetherFree(
                each.key, lifeline_.guard([this, key = each.key](std::optional<bool> answer) {
                    if (answer.value_or(false)) {
                        noteFree(key);
                    }
                }));
        }
    }
}

void KWinHotKeyPlatform::noteFree(std::int32_t key) {
    if (std::erase_if(refused_, [key](const Refused& each) { return each.key == key; }) != 0) {
        tellAvailability();
    }
}

void KWinHotKeyPlatform::tellAvailability() {
    if (!std::exchange(isTelling_, true)) {
        runLoop_.post(lifeline_.guard([this] {
            isTelling_ = false;
            if (availabilityChanged_) {
                availabilityChanged_();
            }
        }));
    }
}

void KWinHotKeyPlatform::giveUnwantedBackLater() {
    if (!std::exchange(isGivingBack_, true)) {
        runLoop_.post(lifeline_.guard([this] {
            isGivingBack_ = false;
            giveUnwantedBack();
        }));
    }
}

/// @param key absent: whatever their combination is
void KWinHotKeyPlatform::giveUnwantedBack(std::optional<std::int32_t> key) {
    LoneBusConnection* const bus = channel_.connection();
    std::erase_if(taken_, [bus, key](const auto& each) {
        const bool isGoing = !each.second.isWanted && (!key || each.second.key == *key);
        if (isGoing && bus != nullptr) {
            KWinGlobalShortcuts(*bus).giveBack(each.first);
        }
        return isGoing;
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
    isSilent_ = false;
    retry_.reset();
    takeAnew();
}

void KWinHotKeyPlatform::followKeyboard() {
    if (channel_.connection() == nullptr) {
        return;
    }
    for (auto& [action, taken] : taken_) {
        taken.isWanted = false;
    }
    takeAnew();
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
    if (!change) {
        lookAgainLater();  // Another program has been given another combination.
        return;
    }
    runLoop_.post(
        lifeline_.guard([this, change = *change] { reassign(change.action, change.key); }));
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
    if (!take(found->second)) {
        tellAvailability();
    }
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
