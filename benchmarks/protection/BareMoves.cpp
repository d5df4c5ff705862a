#include "benchmarks/protection/BareMoves.h"

#include <poll.h>

#include <chrono>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::benchmark {

namespace {

using desktop::XReply;

// North-west gravity stated, x and y given, asked by a pager.
constexpr std::uint32_t placingFlags = 1U | (3U << 8U) | (2U << 12U);

}  // namespace

BareMoves::BareMoves(const std::string& display,
                     const std::vector<std::unique_ptr<desktop::TestWindow>>& windows)
    : XClient(display) {
    for (const auto& window : windows) {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection(), window->id(), XCB_CW_EVENT_MASK, &mask);
        const desktop::PixelRect frame = window->frame();
        places_.push_back({window->id(), frame.x, frame.y});
    }
    roundTrip();
}

double BareMoves::move(int dx, int dy) {
    const auto begin = std::chrono::steady_clock::now();
    const desktop::Deadline deadline = desktop::Deadline::usual();
    for (Place& place : places_) {
        place.x += dx;
        place.y += dy;
        awaited_ = place.window;
        ask(place.window, "_NET_MOVERESIZE_WINDOW",
            {placingFlags, static_cast<std::uint32_t>(place.x), static_cast<std::uint32_t>(place.y),
             0, 0});
        while (awaited_ != XCB_WINDOW_NONE) {
            pollfd readable{xcb_get_file_descriptor(connection()), POLLIN, 0};
            poll(&readable, 1, deadline.milliseconds(1000));
            while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection())}) {
                handle(*event);
            }
            if (deadline.isOver()) {
                throw desktop::DesktopError("a window does not move");
            }
        }
    }
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin)
        .count();
}

void BareMoves::handle(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7f) == XCB_CONFIGURE_NOTIFY &&
        reinterpret_cast<const xcb_configure_notify_event_t&>(event).window == awaited_) {
        awaited_ = XCB_WINDOW_NONE;
    }
}

}  // namespace lumatile::benchmark
