#include "platform/x11/X11HotKeyPlatform.h"

#include <algorithm>
#include <utility>

#include "commands/Shortcut.h"
#include "platform/x11/X11Event.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

constexpr std::uint32_t knownModifiers = ClassicModifier::command | ClassicModifier::shift |
                                         ClassicModifier::option | ClassicModifier::control;

}  // namespace

X11HotKeyPlatform::X11HotKeyPlatform(X11Connection& connection)
    : connection_(connection), keyboard_(connection) {
    heldKeys_.setRepeat(keyboard_.repeat());
    subscription_ =
        connection.observe([this](const xcb_generic_event_t& event) { noteEvent(event); });
}

X11HotKeyPlatform::~X11HotKeyPlatform() {
    registrations_.clear();
    releaseUnused();
}

void X11HotKeyPlatform::installHandler(Handler handler) { handler_ = std::move(handler); }

std::optional<HotKeyReference> X11HotKeyPlatform::registerHotKey(std::uint32_t keyCode,
                                                                 std::uint32_t modifiers,
                                                                 HotKeyID id) {
    const Refused combination{keyCode, modifiers & knownModifiers};
    const bool isOurs =
        std::any_of(registrations_.begin(), registrations_.end(),
                    [&](const auto& entry) { return entry.second.combination == combination; });
    if (isOurs) {
        return std::nullopt;
    }
    const std::optional<Grab> base = baseOf(combination);
    if (!base || !take(*base)) {
        refused_.insert(combination);
        return std::nullopt;
    }
    refused_.erase(combination);
    const HotKeyReference reference = nextReference_++;
    registrations_.emplace(reference, Registration{combination, id, base});
    return reference;
}

void X11HotKeyPlatform::unregisterHotKey(HotKeyReference reference) {
    if (registrations_.erase(reference) == 0) {
        return;
    }
    if (registrations_.empty()) {
        refused_.clear();
    }
    releaseUnused();
}

std::vector<X11HotKeyPlatform::Refused> X11HotKeyPlatform::refusedRegistrations() const {
    std::set<Refused> all = refused_;
    for (const auto& [reference, registration] : registrations_) {
        if (!registration.base) {
            all.insert(registration.combination);
        }
    }
    return {all.begin(), all.end()};
}

std::optional<X11HotKeyPlatform::Grab> X11HotKeyPlatform::baseOf(const Refused& combination) const {
    const auto key = keyboard_.keyCodeOf(combination.keyCode);
    if (!key) {
        return std::nullopt;
    }
    return Grab{*key, keyboard_.modifiers().ofClassic(combination.modifiers)};
}

std::vector<X11HotKeyPlatform::Grab> X11HotKeyPlatform::withLocks(const Grab& base) const {
    std::vector<Grab> grabs;
    for (const std::uint16_t locks : keyboard_.modifiers().lockStates()) {
        const Grab grab{base.key, static_cast<std::uint16_t>(base.modifiers | locks)};
        if (std::find(grabs.begin(), grabs.end(), grab) == grabs.end()) {
            grabs.push_back(grab);
        }
    }
    return grabs;
}

/// All lock states or none, in one round trip.
bool X11HotKeyPlatform::take(const Grab& base) {
    xcb_connection_t* const server = connection_.get();
    std::vector<std::pair<Grab, xcb_void_cookie_t>> asked;
    for (const Grab& grab : withLocks(base)) {
        if (!grabs_.contains(grab)) {
            asked.emplace_back(
                grab, xcb_grab_key_checked(server, 0, connection_.root(), grab.modifiers, grab.key,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
    }
    std::vector<Grab> given;
    for (const auto& [grab, cookie] : asked) {
        const X11Reply<xcb_generic_error_t> error(xcb_request_check(server, cookie));
        if (!error && !connection_.isLost()) {
            given.push_back(grab);
        }
    }
    if (given.size() != asked.size()) {
        for (const Grab& grab : given) {
            xcb_ungrab_key(server, grab.key, connection_.root(), grab.modifiers);
        }
        xcb_flush(server);
        return false;
    }
    grabs_.insert(given.begin(), given.end());
    return true;
}

/// Gives back every grab that no registration needs. Two registrations may share one: on a keyboard
/// where two modifiers are the same key, two combinations are.
void X11HotKeyPlatform::releaseUnused() {
    std::set<Grab> needed;
    for (const auto& [reference, registration] : registrations_) {
        if (registration.base) {
            const auto grabs = withLocks(*registration.base);
            needed.insert(grabs.begin(), grabs.end());
        }
    }
    for (auto grab = grabs_.begin(); grab != grabs_.end();) {
        if (needed.contains(*grab)) {
            ++grab;
            continue;
        }
        xcb_ungrab_key(connection_.get(), grab->key, connection_.root(), grab->modifiers);
        grab = grabs_.erase(grab);
    }
    xcb_flush(connection_.get());
}

/// New grabs come before the old ones go, so that a key that stays where it is never misses a
/// press.
void X11HotKeyPlatform::followKeyboard() {
    keyboardChanged_ = false;
    keyboard_.read();
    heldKeys_.setRepeat(keyboard_.repeat());
    const std::vector<Refused> before = refusedRegistrations();
    for (auto& [reference, registration] : registrations_) {
        registration.base = baseOf(registration.combination);
        if (registration.base && !take(*registration.base)) {
            registration.base.reset();
        }
    }
    const bool mayBeHad = mayHaveRefused();
    releaseUnused();
    // A copy, since who is told registers anew.
    const AvailabilityChanged changed = availabilityChanged_;
    if (changed && (mayBeHad || refusedRegistrations() != before)) {
        changed();
    }
}

/// Whether something that was refused is free on the keyboard as it is now.
bool X11HotKeyPlatform::mayHaveRefused() {
    return std::any_of(refused_.begin(), refused_.end(), [this](const Refused& combination) {
        const std::optional<Grab> base = baseOf(combination);
        return base && take(*base);
    });
}

void X11HotKeyPlatform::noteEvent(const xcb_generic_event_t& event) {
    const int type = X11Event::type(event);
    if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
        // Programs may send keys to any window, the root as well; only real keys count.
        if (X11Event::isSent(event)) {
            return;
        }
        const auto& key = X11Event::as<xcb_key_press_event_t>(event);
        if (type == XCB_KEY_PRESS) {
            notePress(key);
        } else {
            heldKeys_.release(key.detail, key.time);
        }
    } else if (keyboard_.isChange(event) && !keyboardChanged_) {
        // A change comes as a burst of events; it is followed once, after them.
        keyboardChanged_ = true;
        connection_.defer(lifeline_.guard([this] { followKeyboard(); }));
    }
}

void X11HotKeyPlatform::notePress(const xcb_key_press_event_t& event) {
    if (!heldKeys_.press(event.detail, event.time)) {
        return;
    }
    const auto modifiers = static_cast<std::uint16_t>(event.state & X11ModifierMap::all &
                                                      ~keyboard_.modifiers().locks());
    // While a key is held the server sends all others too, so the combination must be looked at.
    const Grab pressed{event.detail, modifiers};
    const auto found =
        std::find_if(registrations_.begin(), registrations_.end(),
                     [&](const auto& entry) { return entry.second.base == pressed; });
    if (found != registrations_.end()) {
        connection_.defer(
            lifeline_.guard([this, reference = found->first] { deliver(reference); }));
    }
}

void X11HotKeyPlatform::deliver(HotKeyReference reference) {
    const auto found = registrations_.find(reference);
    if (found == registrations_.end() || !handler_) {
        return;
    }
    // Copies, since the handler may register anew.
    const Handler handler = handler_;
    const HotKeyID id = found->second.id;
    handler(id);
}

}  // namespace lumatile
