#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace lumatile {

/// What a hot-key registration is known by: who made it and which one it is.
struct HotKeyID {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;

    bool operator==(const HotKeyID&) const = default;
};

/// A physical key and the modifiers held with it, as in `Shortcut`.
struct KeyCombination {
    std::uint32_t keyCode = 0;
    std::uint32_t modifiers = 0;

    auto operator<=>(const KeyCombination&) const = default;
};

/// What a combination does, for desktops that list the combinations of all programs.
struct HotKeyPurpose {
    std::string key;    ///< The same in every run.
    std::string title;  ///< For the user.
};

/// The platform's handle on a registration that it accepted.
using HotKeyReference = std::uint64_t;

/// Port: key combinations that reach this program whichever window is in front.
class HotKeyPlatform {
public:
    /// Called on the main thread for every press of a registered combination, once however long it
    /// is held. The id is absent when the event's own could not be read.
    /// @return 0, the status of an event that was handled
    using Handler = std::function<std::int32_t(std::optional<HotKeyID>)>;

    /// Called on the main thread when the user has given a registration another combination, or
    /// none, in the desktop's own list of them.
    using Reassigned = std::function<void(HotKeyID, std::optional<KeyCombination>)>;

    /// Called on the main thread when the desktop gives out combinations anew: ones that were
    /// refused may be had now, and ones that were given may have been lost.
    using AvailabilityChanged = std::function<void()>;

    virtual ~HotKeyPlatform() = default;

    /// Sets the one handler of all presses.
    virtual void installHandler(Handler handler) = 0;

    /// Sets the one observer of combinations that are changed elsewhere. Nothing happens where they
    /// cannot be.
    virtual void installReassigned(const Reassigned& /*reassigned*/) {}

    /// Sets the one observer of what can be had, who registers anew whatever it wants. Nothing
    /// happens where the desktop does not tell.
    virtual void installAvailabilityChanged(const AvailabilityChanged& /*changed*/) {}

    /// Who has a combination that was refused, as the user knows it: "Switch to Desktop 1 of KWin".
    /// Empty where the desktop does not tell.
    virtual std::string holder(const KeyCombination& /*combination*/) { return {}; }

    /// Says what the combination that is registered next under `id` does. Nothing happens where
    /// nobody lists it.
    virtual void describe(HotKeyID /*id*/, const HotKeyPurpose& /*purpose*/) {}

    /// @param keyCode a physical key (virtual key code, `Shortcut::carbonKeyCode`)
    /// @param modifiers classic modifier mask (`Shortcut::carbonModifiers`)
    /// @return absent when the combination is reserved or another program has it
    virtual std::optional<HotKeyReference> registerHotKey(std::uint32_t keyCode,
                                                          std::uint32_t modifiers, HotKeyID id) = 0;

    virtual void unregisterHotKey(HotKeyReference reference) = 0;
};

}  // namespace lumatile
