#include "platform/x11/X11ManagerSelection.h"

#include <cstdint>

#include "platform/x11/X11Reply.h"

namespace lumatile {

xcb_atom_t managerSelection(const X11Connection& connection, const std::string& prefix) {
    int number = 0;
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
         screens.rem > 1 && screens.data->root != connection.root(); xcb_screen_next(&screens)) {
        ++number;
    }
    const std::string name = prefix + std::to_string(number);
    const X11Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection.get(),
        xcb_intern_atom(connection.get(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

}  // namespace lumatile
