#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "base/ObserverList.h"
#include "platform/keyboard/KeyMap.h"
#include "platform/wayland/WaylandConnection.h"
#include "ports/KeyCodes.h"

namespace lumatile {

/// The compositor's keyboard. Its map comes as soon as there is a keyboard and whenever the layouts
/// change; until then the keys are where they usually are, and nothing is on them. Which of the
/// layouts is in force a compositor tells only who has the focus, so it is told from outside.
class WaylandKeyboard final : public KeyCodes {
public:
    using Observers = ObserverList<>;

    /// @param connection outlives this
    explicit WaylandKeyboard(WaylandConnection& connection);
    WaylandKeyboard(const WaylandKeyboard&) = delete;
    WaylandKeyboard& operator=(const WaylandKeyboard&) = delete;
    ~WaylandKeyboard() override;

    /// @param nativeScanCode evdev's plus 8, as the toolkit has it
    std::optional<std::uint32_t> virtualKeyCode(std::uint32_t nativeScanCode) override;
    std::map<std::uint32_t, std::string> legends() override;

    /// What the key has without modifiers in the layout that is in force, as XKB numbers it; 0 for
    /// nothing.
    std::uint32_t keysymAt(std::uint32_t virtualKeyCode) const;

    /// @param index of the layout that is in force, from 0
    void setGroup(std::uint32_t index);

    /// Whether the compositor has sent its map.
    bool isKnown() const { return isKnown_; }

    /// `observer` is told when other symbols have come onto the keys.
    Observers::Subscription observe(Observers::Observer observer);

private:
    struct Listeners;

    void add(const WaylandGlobal& global);
    void remove(const WaylandGlobal& global);
    void noteCapabilities(std::uint32_t capabilities);
    void noteMap(std::uint32_t format, int descriptor, std::uint32_t size);

    WaylandConnection& connection_;
    KeyMap map_;
    bool isKnown_ = false;
    std::uint32_t group_ = 0;
    std::uint32_t seatName_ = 0;
    WaylandHandle<wl_seat> seat_;
    WaylandHandle<wl_keyboard> keyboard_;
    Observers observers_;
    WaylandConnection::Subscription appearing_;
    WaylandConnection::Subscription vanishing_;
};

}  // namespace lumatile
