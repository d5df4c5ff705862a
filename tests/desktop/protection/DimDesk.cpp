#include "tests/desktop/protection/DimDesk.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

namespace {

constexpr std::string_view title = "Lumatile dimming";

std::unique_ptr<X11Connection> opened(const std::string& display) {
    auto connection = X11Connection::open(display);
    if (!connection) {
        throw DesktopError("no server at " + display);
    }
    return connection;
}

std::string nameOf(XClient& client, xcb_window_t window) {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        client.connection(),
        xcb_get_property(client.connection(), 0, window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 0, 64),
        nullptr));
    return reply ? std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                               static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))
                 : std::string();
}

}  // namespace

DimDesk::DimDesk(const std::string& display)
    : connection_(opened(display)),
      monitors_(*connection_),
      overlays_(std::make_unique<X11DimOverlays>(*connection_, monitors_, log_)),
      colors_(display) {}

void DimDesk::abandon() {
    connection_->synchronize();
    shutdown(connection_->fileDescriptor(), SHUT_RDWR);
    connection_->synchronize();
    if (!connection_->isLost()) {
        throw DesktopError("the connection is still there");
    }
    overlays_.reset();
}

void DimDesk::catchUp() {
    connection_->synchronize();
    connection_->dispatch();
    connection_->synchronize();
}

bool DimDesk::runUntil(const std::function<bool()>& condition) {
    return XClient::waitUntil(
        [&] {
            connection_->dispatch();
            return condition();
        },
        Deadline::usual(), {connection_->fileDescriptor()});
}

std::vector<xcb_window_t> DimDesk::stacking() {
    const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        colors_.connection(), xcb_query_tree(colors_.connection(), colors_.root()), nullptr));
    if (!tree) {
        throw DesktopError("the server is gone");
    }
    const xcb_window_t* first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

std::vector<FoundOverlay> DimDesk::found() {
    std::vector<FoundOverlay> result;
    xcb_connection_t* const server = colors_.connection();
    for (const xcb_window_t window : stacking()) {
        if (nameOf(colors_, window) != title) {
            continue;
        }
        const XReply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(server, xcb_get_geometry(server, window), nullptr));
        const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            server, xcb_get_window_attributes(server, window), nullptr));
        if (geometry && attributes) {
            result.push_back({window,
                              {geometry->x, geometry->y, geometry->width, geometry->height},
                              attributes->map_state == XCB_MAP_STATE_VIEWABLE,
                              attributes->override_redirect == 0});
        }
    }
    return result;
}

bool DimDesk::areAbove(xcb_window_t window) {
    const std::vector<xcb_window_t> order = stacking();
    // The child of the root that holds it: a frame, or itself.
    xcb_window_t top = window;
    for (;;) {
        const XReply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
            colors_.connection(), xcb_query_tree(colors_.connection(), top), nullptr));
        if (!tree) {
            throw DesktopError("the window is gone");
        }
        if (tree->parent == colors_.root()) {
            break;
        }
        top = tree->parent;
    }
    const auto place = std::find(order.begin(), order.end(), top);
    const std::vector<FoundOverlay> overlays = found();
    return !overlays.empty() && place != order.end() &&
           std::all_of(overlays.begin(), overlays.end(), [&](const FoundOverlay& overlay) {
               return std::find(place, order.end(), overlay.window) != order.end();
           });
}

ScreenColor DimDesk::shownAt(int x, int y, const ScreenColor& expected) {
    ScreenColor shown;
    runUntil([&] {
        shown = colorAt(x, y);
        return shown.isNear(expected, tolerance);
    });
    return shown;
}

void DimDesk::expectShown(int x, int y, const ScreenColor& expected) {
    const ScreenColor shown = shownAt(x, y, expected);
    EXPECT_TRUE(shown.isNear(expected, tolerance))
        << shown << " instead of " << expected << " at " << x << ", " << y;
}

Backdrop::Backdrop(const std::string& display, std::uint32_t color, const PixelRect& area)
    : XClient(display), window_(xcb_generate_id(connection())) {
    const std::array<std::uint32_t, 2> values = {color, 1};
    xcb_create_window(
        connection(), XCB_COPY_FROM_PARENT, window_, root(), static_cast<std::int16_t>(area.x),
        static_cast<std::int16_t>(area.y), static_cast<std::uint16_t>(area.width),
        static_cast<std::uint16_t>(area.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    xcb_map_window(connection(), window_);
    roundTrip();
}

Backdrop::~Backdrop() {
    if (!isLost()) {
        xcb_destroy_window(connection(), window_);
        roundTrip();
    }
}

}  // namespace lumatile::desktop
