#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include <xcb/xcb.h>

#include "platform/x11/X11Reply.h"

namespace lumatile {

/// A window property as the server answered it. Whoever owns the window may have written anything:
/// a value of another form than asked for, or one longer than the reader's bound, counts as absent.
class X11Property {
public:
    /// Bound for properties that hold one item; xfwm4 writes a second one behind some.
    static constexpr std::uint32_t singleItem = 4;

    /// @param longLength bound on the length, in items of 32 bits
    static xcb_get_property_cookie_t ask(xcb_connection_t* connection, xcb_window_t window,
                                         xcb_atom_t name, xcb_atom_t type,
                                         std::uint32_t longLength);

    /// Waits for the answer.
    X11Property(xcb_connection_t* connection, xcb_get_property_cookie_t cookie);

    /// Whether there is a 32-bit property, be it an empty list.
    bool isList() const { return isWhole(32); }

    /// The items of a 32-bit property; empty when absent.
    std::span<const std::uint32_t> items() const;

    /// The first of the items.
    std::optional<std::uint32_t> first() const;

    bool has(xcb_atom_t atom) const;

    /// The bytes of an 8-bit property; empty when absent.
    std::string_view bytes() const;

private:
    bool isWhole(std::uint8_t format) const;

    X11Reply<xcb_get_property_reply_t> reply_;
};

}  // namespace lumatile
