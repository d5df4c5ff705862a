#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <unordered_map>

#include "base/Lifeline.h"
#include "hotkeys/HotKeyPlatform.h"

namespace lumatile {

/// Turns key combinations into calls: keeps one action per registration and calls it when the
/// combination is pressed. There is one service in the process; ids are never handed out twice.
class HotkeyService {
public:
    using Action = std::function<void()>;

    /// "LUMA", the signature in the id of every registration.
    static constexpr std::uint32_t signature = 0x4C554D41;

    /// @param platform outlives the service
    explicit HotkeyService(HotKeyPlatform& platform);
    HotkeyService(const HotkeyService&) = delete;
    HotkeyService& operator=(const HotkeyService&) = delete;
    ~HotkeyService();

    /// Registers a combination. One that the platform refuses, because another program has it, gets
    /// an id all the same, and its action is never called; `holds` tells.
    /// @param keyCode virtual key code of the physical key
    /// @param modifiers classic modifier mask
    /// @param purpose for desktops that list the combinations of all programs
    /// @return the id under which the action is kept
    std::uint32_t registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, Action action,
                                 const HotKeyPurpose& purpose = {});

    /// Whether the platform gave out the combination that was registered under `id`, and this
    /// service still has it.
    bool holds(std::uint32_t id) const { return refs_.contains(id); }

    /// Called when the user has given the registration of this id another combination, or none, in
    /// the desktop's own list.
    std::function<void(std::uint32_t id, std::optional<KeyCombination>)> onReassigned;

    /// Called when combinations that were refused may be had now, or ones that this service holds
    /// have been lost; whoever wants them registers them anew.
    std::function<void()> onAvailabilityChanged;

    /// Gives back every combination that this service holds.
    void unregisterAll();

private:
    void perform(std::uint32_t id);

    std::unordered_map<std::uint32_t, Action> handlers_;
    std::unordered_map<std::uint32_t, HotKeyReference> refs_;
    std::uint32_t nextID_ = 1;
    bool installed_ = false;
    HotKeyPlatform& platform_;
    Lifeline lifeline_;  // The platform keeps the handler for ever.
};

}  // namespace lumatile
