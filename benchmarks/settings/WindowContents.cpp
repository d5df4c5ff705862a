#include "benchmarks/settings/WindowContents.h"

#include <cstddef>
#include <cstring>
#include <span>

#include "tests/desktop/support/Deadline.h"
#include "tests/desktop/support/DesktopError.h"

namespace lumatile::benchmark {

using desktop::Deadline;
using desktop::DesktopError;
using desktop::XReply;

namespace {

// The windows that are measured are 920 wide; icons, menus and helpers are not.
constexpr int leastWidth = 600;

// A strip with text in it. Nothing but text has so many shades.
constexpr std::uint16_t stripHeight = 120;
constexpr std::size_t shadesOfText = 6;

void watch(xcb_connection_t* connection, xcb_window_t window, std::uint32_t mask) {
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &mask);
}

}  // namespace

WindowContents::WindowContents(const std::string& display) : XClient(display) {
    watch(connection(), root(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    roundTrip();
}

void WindowContents::waitForOpened() {
    if (!waitUntil([this] { return opened_ != XCB_WINDOW_NONE; })) {
        throw DesktopError("no window has opened");
    }
    const Deadline deadline = Deadline::usual();
    while (!isDrawn()) {
        if (deadline.isOver()) {
            throw DesktopError("the window stays empty");
        }
    }
}

bool WindowContents::isDrawn() {
    const XReply<xcb_get_image_reply_t> strip(
        xcb_get_image_reply(connection(),
                            xcb_get_image(connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, opened_, 0, 0,
                                          leastWidth, stripHeight, ~0U),
                            nullptr));
    if (!strip) {
        return false;
    }
    const std::span bytes(xcb_get_image_data(strip.get()),
                          static_cast<std::size_t>(xcb_get_image_data_length(strip.get())));
    std::set<std::uint32_t> shades;
    for (std::size_t at = 0; at + sizeof(std::uint32_t) <= bytes.size();
         at += sizeof(std::uint32_t)) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, &bytes[at], sizeof pixel);
        shades.insert(pixel);
        if (shades.size() >= shadesOfText) {
            return true;
        }
    }
    return false;
}

void WindowContents::close() {
    constexpr std::uint32_t fromPager = 2;
    ask(opened_, "_NET_CLOSE_WINDOW", {XCB_CURRENT_TIME, fromPager});
    if (!waitUntil([this] { return opened_ == XCB_WINDOW_NONE; })) {
        throw DesktopError("the window does not close");
    }
}

void WindowContents::handle(const xcb_generic_event_t& event) {
    constexpr std::uint8_t sentMark = 0x80;
    switch (event.response_type & ~sentMark) {
        case XCB_CREATE_NOTIFY: {
            const auto& created = reinterpret_cast<const xcb_create_notify_event_t&>(event);
            if (created.override_redirect == 0) {
                watch(connection(), created.window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
                // It may be mapped only after this is known.
                xcb_flush(connection());
            }
            break;
        }
        case XCB_MAP_NOTIFY: {
            const auto& mapped = reinterpret_cast<const xcb_map_notify_event_t&>(event);
            // Told by the window itself and not by its parent; and not the window manager's frame.
            if (mapped.event == mapped.window &&
                !cardinals(mapped.window, "WM_PROTOCOLS").empty()) {
                const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
                    connection(), xcb_get_geometry(connection(), mapped.window), nullptr));
                if (geometry && geometry->width >= leastWidth) {
                    opened_ = mapped.window;
                }
            }
            break;
        }
        case XCB_UNMAP_NOTIFY: {
            const auto& unmapped = reinterpret_cast<const xcb_unmap_notify_event_t&>(event);
            if (unmapped.event == opened_ && unmapped.window == opened_) {
                opened_ = XCB_WINDOW_NONE;
            }
            break;
        }
        default:
            break;
    }
}

}  // namespace lumatile::benchmark
