#include "tests/desktop/support/shifting/UnmanagedWindow.h"

namespace lumatile::desktop {

UnmanagedWindow::UnmanagedWindow(const std::string& display, const PixelRect& area)
    : XClient(display), window_(xcb_generate_id(connection())) {
    const std::uint32_t overrideRedirect = 1;
    xcb_create_window(connection(), XCB_COPY_FROM_PARENT, window_, root(),
                      static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                      static_cast<std::uint16_t>(area.width),
                      static_cast<std::uint16_t>(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                      XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    xcb_map_window(connection(), window_);
    roundTrip();
}

}  // namespace lumatile::desktop
