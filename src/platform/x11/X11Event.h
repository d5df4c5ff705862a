#pragma once

#include <cstdint>

#include <xcb/xcb.h>

namespace lumatile {

/// Looking into an event of the server.
struct X11Event {
    X11Event() = delete;

    /// Its kind, be it the server's own or sent on by another program; 0 for an error.
    static std::uint8_t type(const xcb_generic_event_t& event) {
        return event.response_type & std::uint8_t{0x7f};
    }

    /// Whether another program made it up, as window managers do to tell programs of their place.
    static bool isSent(const xcb_generic_event_t& event) {
        return (event.response_type & std::uint8_t{0x80}) != 0;
    }

    /// Whether the server made the event before it dealt with the request of that number.
    static bool isBefore(const xcb_generic_event_t& event, std::uint32_t sequence) {
        return static_cast<std::int32_t>(event.full_sequence - sequence) < 0;
    }

    /// The event as the structure that belongs to its type.
    template <typename Event>
    static const Event& as(const xcb_generic_event_t& event) {
        // The protocol library's own way: all events share one buffer of 32 bytes or more.
        return reinterpret_cast<const Event&>(event);  // NOLINT(*-reinterpret-cast)
    }
};

}  // namespace lumatile
