#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "base/Lifeline.h"
#include "hotkeys/HotKeyPlatform.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11HeldKeys.h"
#include "platform/x11/X11Keyboard.h"

namespace lumatile {

/// Hot keys as passive grabs on the root window: physical keys, in every state of the lock keys.
/// Registrations outlive changes of the keyboard: the grabs follow the keys.
class X11HotKeyPlatform final : public HotKeyPlatform {
public:
    /// A combination that this program wants and does not have.
    struct Refused {
        std::uint32_t keyCode = 0;    ///< Virtual key code.
        std::uint32_t modifiers = 0;  ///< Classic modifier mask, without the bits that are ignored.

        auto operator<=>(const Refused&) const = default;
    };

    /// @param connection outlives the platform
    explicit X11HotKeyPlatform(X11Connection& connection);
    X11HotKeyPlatform(const X11HotKeyPlatform&) = delete;
    X11HotKeyPlatform& operator=(const X11HotKeyPlatform&) = delete;
    ~X11HotKeyPlatform() override;

    void installHandler(Handler handler) override;

    /// Told when the keyboard has become another one, and that has taken a combination away or
    /// makes one to be had that was refused.
    void installAvailabilityChanged(const AvailabilityChanged& changed) override {
        availabilityChanged_ = changed;
    }

    /// Absent also for a code that no key of this keyboard has, and for a combination that this
    /// program has registered already.
    std::optional<HotKeyReference> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                  HotKeyID id) override;

    void unregisterHotKey(HotKeyReference reference) override;

    /// The combinations that were refused since the last registration was given back, and those
    /// that were lost when the keyboard changed, each once.
    std::vector<Refused> refusedRegistrations() const;

private:
    /// One passive grab of the server.
    struct Grab {
        X11Keyboard::KeyCode key = 0;
        std::uint16_t modifiers = 0;

        auto operator<=>(const Grab&) const = default;
    };

    struct Registration {
        Refused combination;
        HotKeyID id;
        std::optional<Grab> base;  // Without lock keys; absent while not grabbed.
    };

    std::optional<Grab> baseOf(const Refused& combination) const;
    std::vector<Grab> withLocks(const Grab& base) const;
    bool take(const Grab& base);
    void releaseUnused();
    void followKeyboard();
    bool mayHaveRefused();
    void noteEvent(const xcb_generic_event_t& event);
    void notePress(const xcb_key_press_event_t& event);
    void deliver(HotKeyReference reference);

    X11Connection& connection_;
    X11Keyboard keyboard_;
    X11HeldKeys heldKeys_;
    Handler handler_;
    AvailabilityChanged availabilityChanged_;
    std::map<HotKeyReference, Registration> registrations_;  // In the order of registration.
    std::set<Grab> grabs_;                                   // What the server has given.
    std::set<Refused> refused_;
    HotKeyReference nextReference_ = 1;
    bool keyboardChanged_ = false;
    X11Connection::Subscription subscription_;
    Lifeline lifeline_;  // For deferred work, which may still be waiting when this is gone.
};

}  // namespace lumatile
