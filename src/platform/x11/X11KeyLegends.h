#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Keyboard.h"

namespace lumatile {

/// What is on the keys in the layout that is in force, by virtual key code: a character, letters in
/// upper case, or else the name of `KeyTable`. Read when it is first asked for, and again after
/// the keyboard or the layout has become another.
class X11KeyLegends {
public:
    using Legends = std::map<std::uint32_t, std::string>;

    /// @param connection outlives this
    explicit X11KeyLegends(X11Connection& connection);

    const Legends& now();

private:
    bool isOtherGroup(const xcb_generic_event_t& event) const;
    Legends read() const;

    X11Connection& connection_;
    X11Keyboard keyboard_;
    int firstXkbEvent_ = 0;  ///< 0: the server tells of no layouts.
    std::optional<Legends> legends_;
    X11Connection::Subscription subscription_;
};

}  // namespace lumatile
