#include "tests/desktop/support/OuterFrame.h"

namespace lumatile::desktop {
namespace {

struct Extents {
    int left = 0;
    int right = 0;
    int top = 0;
    int bottom = 0;
};

Extents extents(XClient& client, xcb_window_t window, std::string_view property) {
    const std::vector<std::uint32_t> items = client.cardinals(window, property);
    if (items.size() != 4) {
        return {};
    }
    return {static_cast<int>(items[0]), static_cast<int>(items[1]), static_cast<int>(items[2]),
            static_cast<int>(items[3])};
}

}  // namespace

std::optional<PixelRect> clientArea(XClient& client, xcb_window_t window) {
    xcb_connection_t* connection = client.connection();
    const auto geometryCookie = xcb_get_geometry(connection, window);
    const auto originCookie = xcb_translate_coordinates(connection, window, client.root(), 0, 0);
    const XReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection, geometryCookie, nullptr));
    const XReply<xcb_translate_coordinates_reply_t> origin(
        xcb_translate_coordinates_reply(connection, originCookie, nullptr));
    if (!geometry || !origin) {
        return std::nullopt;
    }
    return PixelRect{origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

std::optional<PixelRect> outerFrame(XClient& client, xcb_window_t window) {
    const std::optional<PixelRect> area = clientArea(client, window);
    if (!area) {
        return std::nullopt;
    }
    const Extents frame = extents(client, window, "_NET_FRAME_EXTENTS");
    const Extents shadow = extents(client, window, "_GTK_FRAME_EXTENTS");
    const int left = frame.left - shadow.left;
    const int top = frame.top - shadow.top;
    return PixelRect{area->x - left, area->y - top, area->width + left + frame.right - shadow.right,
                     area->height + top + frame.bottom - shadow.bottom};
}

}  // namespace lumatile::desktop
