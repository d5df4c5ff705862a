#include "platform/x11/X11RootMessage.h"

#include <algorithm>
#include <bit>

namespace lumatile {

void sendRootMessage(X11Connection& connection, xcb_window_t window, xcb_atom_t type,
                     const std::array<std::uint32_t, 5>& data) {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::copy(data.begin(), data.end(), std::begin(message.data.data32));
    const auto bytes = std::bit_cast<std::array<char, sizeof message>>(message);
    xcb_send_event(connection.get(), 0, connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   bytes.data());
}

}  // namespace lumatile
