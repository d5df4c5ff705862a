// bare_messenger KEY WINDOW X Y WIDTH HEIGHT: asks the window manager to lay the window there (the
// corner of its frame, the size of its inside) whenever the key is pressed with Control and Alt.
// The least that a program beside the window manager can do about a key.

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

// A pager's, with all four numbers, by the frame's north-western corner.
constexpr std::uint32_t gravityAndFlags = 1U | 0xF00U | (2U << 12U);

std::uint32_t number(const char* text) {
    return static_cast<std::uint32_t>(std::strtoul(text, nullptr, 10));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 7) {
        return EXIT_FAILURE;
    }
    xcb_connection_t* const server = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(server) != 0) {
        return EXIT_FAILURE;
    }
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    const std::string name = "_NET_MOVERESIZE_WINDOW";
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(
            server,
            xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.c_str()),
            nullptr),
        std::free);
    if (!atom) {
        return EXIT_FAILURE;
    }
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = number(argv[2]);
    message.type = atom->atom;
    message.data.data32[0] = gravityAndFlags;
    for (int each = 1; each <= 4; ++each) {
        message.data.data32[each] = number(argv[each + 2]);
    }
    xcb_grab_key(server, 0, root, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1,
                 static_cast<xcb_keycode_t>(number(argv[1])), XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    xcb_flush(server);
    while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{
        xcb_wait_for_event(server), std::free}) {
        if ((event->response_type & 0x7FU) == XCB_KEY_PRESS) {
            xcb_send_event(
                server, 0, root,
                XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                reinterpret_cast<const char*>(&message));
            xcb_flush(server);
        }
    }
    xcb_disconnect(server);
    return EXIT_SUCCESS;
}
