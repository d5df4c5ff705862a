#include "tests/desktop/protection/GammaClient.h"

#include <xcb/randr.h>

#include <cmath>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

namespace {

constexpr double full = 65535;

}  // namespace

std::uint32_t GammaClient::controller(std::size_t number) {
    const XReply<xcb_randr_get_screen_resources_current_reply_t> resources(
        xcb_randr_get_screen_resources_current_reply(
            connection(), xcb_randr_get_screen_resources_current(connection(), root()), nullptr));
    if (!resources || number >= resources->num_crtcs) {
        throw DesktopError("the server has no such controller");
    }
    return xcb_randr_get_screen_resources_current_crtcs(resources.get())[number];
}

std::vector<std::uint16_t> GammaClient::ramp(std::uint32_t controller) {
    const XReply<xcb_randr_get_crtc_gamma_reply_t> reply(xcb_randr_get_crtc_gamma_reply(
        connection(), xcb_randr_get_crtc_gamma(connection(), controller), nullptr));
    std::vector<std::uint16_t> result;
    if (reply) {
        for (const std::uint16_t* channel : {xcb_randr_get_crtc_gamma_red(reply.get()),
                                             xcb_randr_get_crtc_gamma_green(reply.get()),
                                             xcb_randr_get_crtc_gamma_blue(reply.get())}) {
            result.insert(result.end(), channel, channel + reply->size);
        }
    }
    return result;
}

void GammaClient::set(std::uint32_t controller, const std::vector<std::uint16_t>& ramp) {
    const std::size_t size = ramp.size() / 3;
    xcb_randr_set_crtc_gamma(connection(), controller, static_cast<std::uint16_t>(size),
                             ramp.data(), ramp.data() + size, ramp.data() + 2 * size);
    roundTrip();
}

std::vector<std::uint16_t> GammaClient::made(std::uint32_t controller,
                                             const std::function<double(double, int)>& value) {
    const std::size_t size = ramp(controller).size() / 3;
    std::vector<std::uint16_t> result;
    for (int channel = 0; channel < 3; ++channel) {
        for (std::size_t i = 0; i < size; ++i) {
            const double place = static_cast<double>(i) / static_cast<double>(size - 1);
            result.push_back(static_cast<std::uint16_t>(std::lround(full * value(place, channel))));
        }
    }
    return result;
}

std::vector<std::uint16_t> GammaClient::curved(std::uint32_t controller) {
    return made(controller,
                [](double place, int channel) { return std::pow(place, 1.1 + 0.3 * channel); });
}

std::vector<std::uint16_t> GammaClient::warm(std::uint32_t controller) {
    return made(controller, [](double place, int channel) { return place * (1 - 0.25 * channel); });
}

std::vector<std::uint16_t> GammaClient::dimmed(const std::vector<std::uint16_t>& ramp,
                                               double opacity) {
    std::vector<std::uint16_t> result;
    for (const std::uint16_t step : ramp) {
        result.push_back(static_cast<std::uint16_t>(std::floor(step * (1 - opacity) + 0.5)));
    }
    return result;
}

}  // namespace lumatile::desktop
