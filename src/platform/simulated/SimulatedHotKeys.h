#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "hotkeys/HotKeyPlatform.h"
#include "platform/simulated/SimulatedRunLoop.h"

namespace lumatile {

/// Who gets a key press.
enum class KeyReceiver : std::uint8_t { thisProgram, otherProgram, frontWindow };

/// The keyboard and the table of who has which combination.
class SimulatedHotKeys final : public HotKeyPlatform {
public:
    /// @param runLoop outlives the keyboard; presses arrive on it
    explicit SimulatedHotKeys(SimulatedRunLoop& runLoop) : runLoop_(runLoop) {}

    void installHandler(Handler handler) override;
    void installReassigned(const Reassigned& reassigned) override { reassigned_ = reassigned; }
    void installAvailabilityChanged(const AvailabilityChanged& changed) override {
        availabilityChanged_ = changed;
    }
    std::string holder(const KeyCombination& combination) override;
    void describe(HotKeyID id, const HotKeyPurpose& purpose) override;
    std::optional<HotKeyReference> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                  HotKeyID id) override;
    void unregisterHotKey(HotKeyReference reference) override;

    /// Another program has the combination from now on; registering it is refused.
    /// @param holder as the desktop names it; empty: it does not
    void take(const KeyCombination& combination, std::string holder = {}) {
        taken_[combination] = std::move(holder);
    }

    /// The user changes a combination of this program in the desktop's own list.
    void reassign(const KeyCombination& combination, std::optional<KeyCombination> to);

    /// What the desktop's own list says of a combination of this program; empty for one that is not
    /// in it.
    std::string listed(const KeyCombination& combination) const;

    /// The other program gives the combination back.
    void release(const KeyCombination& combination) { taken_.erase(combination); }

    /// The desktop tells that it gives out combinations anew.
    void tellAvailability();

    /// Puts a combination down. Down already, it repeats, which nobody hears of.
    KeyReceiver keyDown(const KeyCombination& combination);
    void keyUp(const KeyCombination& combination) { down_.erase(combination); }

    /// Puts a combination down and lets it go.
    KeyReceiver press(const KeyCombination& combination);

    /// Brings an event with any id to the handler, as one that was under way while its registration
    /// ended, or whose id cannot be read.
    void deliver(std::optional<HotKeyID> id);

    /// From now on the id of a press cannot be read from its event, or can again.
    void setEventsUnreadable(bool unreadable) { areEventsUnreadable_ = unreadable; }

    /// The combinations this program has, each as often as it is registered, in ascending order.
    std::vector<KeyCombination> registered() const;

    /// Asked for and refused so far.
    std::size_t refusals() const { return refusals_; }

    /// Handlers installed so far.
    std::size_t installations() const { return installations_; }

    /// Attempts so far to end a registration that there was not.
    std::size_t strayUnregistrations() const { return strayUnregistrations_; }

    /// What the handler answered to the last event.
    std::optional<std::int32_t> lastStatus() const { return lastStatus_; }

private:
    struct Registration {
        KeyCombination combination;
        HotKeyID id;
    };

    SimulatedRunLoop& runLoop_;
    Handler handler_;
    std::map<HotKeyReference, Registration> registrations_;
    std::map<KeyCombination, std::string> taken_;  // By whom.
    std::map<std::uint32_t, HotKeyPurpose> purposes_;
    Reassigned reassigned_;
    AvailabilityChanged availabilityChanged_;
    std::set<KeyCombination> down_;
    HotKeyReference lastReference_ = 0;
    std::size_t refusals_ = 0;
    std::size_t installations_ = 0;
    std::size_t strayUnregistrations_ = 0;
    std::optional<std::int32_t> lastStatus_;
    bool areEventsUnreadable_ = false;
};

}  // namespace lumatile
