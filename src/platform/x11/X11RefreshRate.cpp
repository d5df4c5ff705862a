#include "platform/x11/X11RefreshRate.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <xcb/randr.h>

#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

/// Pictures a second; 0 where the mode does not say.
double rateOf(const xcb_randr_mode_info_t& mode) {
    const double pixels = static_cast<double>(mode.htotal) * mode.vtotal;
    double rate = pixels > 0 ? mode.dot_clock / pixels : 0;
    if ((mode.mode_flags & XCB_RANDR_MODE_FLAG_INTERLACE) != 0) {
        rate *= 2;
    }
    if ((mode.mode_flags & XCB_RANDR_MODE_FLAG_DOUBLE_SCAN) != 0) {
        rate /= 2;
    }
    return rate;
}

}  // namespace

X11RefreshRate::X11RefreshRate(X11Connection& connection, const X11RandR& randr)
    : connection_(connection),
      randr_(randr),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) {
          isStale_ = isStale_ || randr_.isChange(event);
      })) {}

double X11RefreshRate::frame() {
    if (std::exchange(isStale_, false)) {
        frame_ = read();
    }
    return frame_;
}

double X11RefreshRate::read() {
    if (!randr_.knowsControllers()) {
        return usualFrame;
    }
    xcb_connection_t* const server = connection_.get();
    const X11Reply<xcb_randr_get_screen_resources_current_reply_t> resources(
        xcb_randr_get_screen_resources_current_reply(
            server, xcb_randr_get_screen_resources_current(server, connection_.root()), nullptr));
    if (!resources) {
        return usualFrame;
    }
    const xcb_randr_crtc_t* const crtcs =
        xcb_randr_get_screen_resources_current_crtcs(resources.get());
    std::vector<xcb_randr_get_crtc_info_cookie_t> cookies;
    cookies.reserve(resources->num_crtcs);
    for (int index = 0; index < resources->num_crtcs; ++index) {
        cookies.push_back(
            xcb_randr_get_crtc_info(server, crtcs[index], resources->config_timestamp));
    }
    const xcb_randr_mode_info_t* const modes =
        xcb_randr_get_screen_resources_current_modes(resources.get());
    double fastest = 0;
    for (const xcb_randr_get_crtc_info_cookie_t& cookie : cookies) {
        const X11Reply<xcb_randr_get_crtc_info_reply_t> crtc(
            xcb_randr_get_crtc_info_reply(server, cookie, nullptr));
        for (int index = 0; crtc && index < resources->num_modes; ++index) {
            if (modes[index].id == crtc->mode) {
                fastest = std::max(fastest, rateOf(modes[index]));
            }
        }
    }
    return fastest > 0 ? std::max(1 / fastest, shortestFrame) : usualFrame;
}

}  // namespace lumatile
