#include "platform/x11/X11Property.h"

#include <algorithm>
#include <cstddef>

namespace lumatile {

xcb_get_property_cookie_t X11Property::ask(xcb_connection_t* connection, xcb_window_t window,
                                           xcb_atom_t name, xcb_atom_t type,
                                           std::uint32_t longLength) {
    return xcb_get_property(connection, 0, window, name, type, 0, longLength);
}

X11Property::X11Property(xcb_connection_t* connection, xcb_get_property_cookie_t cookie)
    : reply_(xcb_get_property_reply(connection, cookie, nullptr)) {}

bool X11Property::isWhole(std::uint8_t format) const {
    return reply_ && reply_->format == format && reply_->bytes_after == 0;
}

std::span<const std::uint32_t> X11Property::items() const {
    if (!isWhole(32)) {
        return {};
    }
    return {static_cast<const std::uint32_t*>(xcb_get_property_value(reply_.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply_.get())) /
                sizeof(std::uint32_t)};
}

std::optional<std::uint32_t> X11Property::first() const {
    const auto all = items();
    return all.empty() ? std::nullopt : std::optional(all.front());
}

bool X11Property::has(xcb_atom_t atom) const {
    const auto all = items();
    return std::find(all.begin(), all.end(), atom) != all.end();
}

std::string_view X11Property::bytes() const {
    if (!isWhole(8)) {
        return {};
    }
    return {static_cast<const char*>(xcb_get_property_value(reply_.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(reply_.get()))};
}

}  // namespace lumatile
