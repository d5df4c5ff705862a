#include "platform/x11/X11WindowRequests.h"

#include <bit>
#include <cstdint>
#include <variant>

#include "platform/x11/X11RootMessage.h"

namespace lumatile {

namespace {

// The first item of the placing message: north-west gravity stated, so that the corner of the
// decoration counts for every program; which items follow; and that a pager asks.
constexpr std::uint32_t northWest = 1;
constexpr std::uint32_t onlyPosition = 3U << 8U;
constexpr std::uint32_t positionAndSize = 15U << 8U;
constexpr std::uint32_t fromPager = 2U << 12U;

constexpr std::uint32_t stateRemove = 0;
constexpr std::uint32_t stateAdd = 1;
constexpr std::uint32_t pagerSource = 2;

std::uint32_t item(int value) { return std::bit_cast<std::uint32_t>(std::int32_t{value}); }

}  // namespace

X11WindowRequests::X11WindowRequests(X11Connection& connection)
    : connection_(connection),
      moveResize_(connection.atoms()["_NET_MOVERESIZE_WINDOW"]),
      state_(connection.atoms()["_NET_WM_STATE"]),
      maximizedHorizontally_(connection.atoms()["_NET_WM_STATE_MAXIMIZED_HORZ"]),
      maximizedVertically_(connection.atoms()["_NET_WM_STATE_MAXIMIZED_VERT"]),
      shaded_(connection.atoms()["_NET_WM_STATE_SHADED"]) {}

void X11WindowRequests::send(xcb_window_t window, std::span<const X11WindowRequest> requests) {
    for (const X11WindowRequest& each : requests) {
        std::visit([&](const auto& request) { send(window, request); }, each);
    }
    xcb_flush(connection_.get());
}

void X11WindowRequests::send(xcb_window_t window, const X11StateRequest& request) {
    xcb_atom_t first = XCB_ATOM_NONE;
    xcb_atom_t second = XCB_ATOM_NONE;
    switch (request.state) {
        case X11StateRequest::State::maximized:
            first = maximizedVertically_;
            second = maximizedHorizontally_;
            break;
        case X11StateRequest::State::maximizedVertically:
            first = maximizedVertically_;
            break;
        case X11StateRequest::State::shaded:
            first = shaded_;
            break;
    }
    sendRootMessage(connection_, window, state_,
                    {request.isAdded ? stateAdd : stateRemove, first, second, pagerSource, 0});
}

void X11WindowRequests::send(xcb_window_t window, const X11PlaceRequest& request) {
    const std::uint32_t items = request.withSize ? positionAndSize : onlyPosition;
    const X11PixelRect& place = request.place;
    sendRootMessage(connection_, window, moveResize_,
                    {northWest | items | fromPager, item(place.x), item(place.y), item(place.width),
                     item(place.height)});
}

}  // namespace lumatile
