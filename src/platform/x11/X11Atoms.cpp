#include "platform/x11/X11Atoms.h"

#include <array>
#include <cstdint>

#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

// What the adapters ask for at start and at every window.
constexpr std::array<std::string_view, 44> commonNames = {
    "UTF8_STRING",
    "WM_STATE",
    "WM_CLIENT_LEADER",
    "_GTK_APPLICATION_ID",
    "_GTK_FRAME_EXTENTS",
    "_KDE_NET_WM_DESKTOP_FILE",
    "_MOTIF_WM_HINTS",
    "_NET_ACTIVE_WINDOW",
    "_NET_CLIENT_LIST",
    "_NET_CLIENT_LIST_STACKING",
    "_NET_CURRENT_DESKTOP",
    "_NET_FRAME_EXTENTS",
    "_NET_MOVERESIZE_WINDOW",
    "_NET_SHOWING_DESKTOP",
    "_NET_SUPPORTED",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_WM_ACTION_MOVE",
    "_NET_WM_ALLOWED_ACTIONS",
    "_NET_WM_DESKTOP",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_STATE",
    "_NET_WM_STATE_FULLSCREEN",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_MAXIMIZED_HORZ",
    "_NET_WM_STATE_MAXIMIZED_VERT",
    "_NET_WM_STATE_SHADED",
    "_NET_WM_STRUT",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_DND",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_SPLASH",
    "_NET_WM_WINDOW_TYPE_TOOLBAR",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_WORKAREA",
};

xcb_intern_atom_cookie_t ask(xcb_connection_t* connection, std::string_view name) {
    return xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data());
}

xcb_atom_t answer(xcb_connection_t* connection, xcb_intern_atom_cookie_t cookie) {
    const X11Reply<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

}  // namespace

X11Atoms::X11Atoms(xcb_connection_t* connection) : connection_(connection) {
    std::array<xcb_intern_atom_cookie_t, commonNames.size()> cookies{};
    for (std::size_t i = 0; i < commonNames.size(); ++i) {
        cookies[i] = ask(connection_, commonNames[i]);
    }
    for (std::size_t i = 0; i < commonNames.size(); ++i) {
        atoms_[commonNames[i]] = answer(connection_, cookies[i]);
    }
}

xcb_atom_t X11Atoms::operator[](std::string_view name) {
    const auto found = atoms_.find(name);
    if (found != atoms_.end()) {
        return found->second;
    }
    const xcb_atom_t atom = answer(connection_, ask(connection_, name));
    atoms_[name] = atom;
    return atom;
}

}  // namespace lumatile
