#include "platform/x11/X11WindowManagerName.h"

#include <cstdint>

#include "platform/x11/X11PlainText.h"
#include "platform/x11/X11Property.h"

namespace lumatile {

std::string windowManagerName(X11Connection& connection, xcb_window_t checkWindow) {
    constexpr std::uint32_t longest = X11PlainText::longest / 4;  // Items of four bytes.
    if (checkWindow == XCB_WINDOW_NONE) {
        return {};
    }
    const X11Property name(
        connection.get(),
        X11Property::ask(connection.get(), checkWindow, connection.atoms()["_NET_WM_NAME"],
                         connection.atoms()["UTF8_STRING"], longest));
    return X11PlainText::of(name.bytes()).value_or(std::string());
}

}  // namespace lumatile
