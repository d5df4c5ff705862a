#include "platform/x11/X11GammaRamps.h"

#include <algorithm>
#include <utility>

#include <xcb/randr.h>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11KeptRamps.h"
#include "platform/x11/X11Property.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

X11GammaRamps::X11GammaRamps(X11Connection& connection)
    : connection_(connection),
      randr_(connection),
      property_(connection.atoms()["_LUMATILE_GAMMA_RAMPS"]) {
    if (!randr_.knowsControllers()) {
        return;
    }
    subscription_ = connection.observe([this](const xcb_generic_event_t& event) {
        if (randr_.isChange(event)) {
            areControllersStale_ = true;
        }
    });
    restoreKept();
}

bool X11GammaRamps::dim(double opacity) {
    const std::map<Controller, X11GammaRamp> now = activeRamps();
    bool originalsChanged = false;
    for (const auto& [controller, ramp] : now) {
        const auto known = dimmed_.find(controller);
        if (known == dimmed_.end() || known->second.set != ramp) {
            dimmed_[controller] = {ramp, ramp};
            originalsChanged = true;
        }
    }
    if (originalsChanged && !keepOriginals()) {
        return false;
    }
    std::vector<Controller> changed;
    for (const auto& [controller, ramp] : now) {
        const X11GammaRamp wanted = dimmed_[controller].original.dimmed(opacity);
        if (wanted != ramp) {
            set(controller, wanted);
            changed.push_back(controller);
        }
    }
    // Drivers may round. What is there now is what a change by somebody else is told from.
    for (auto& [controller, ramp] : ramps(changed)) {
        dimmed_[controller].set = std::move(ramp);
    }
    return !now.empty();
}

void X11GammaRamps::restore() {
    if (dimmed_.empty()) {
        return;
    }
    std::vector<Controller> controllers;
    for (const auto& [controller, dimmed] : dimmed_) {
        controllers.push_back(controller);
    }
    for (const auto& [controller, ramp] : ramps(controllers)) {
        const Dimmed& dimmed = dimmed_[controller];
        if (ramp == dimmed.set) {
            set(controller, dimmed.original);
        }
    }
    dimmed_.clear();
    xcb_delete_property(connection_.get(), connection_.root(), property_);
    xcb_flush(connection_.get());
}

std::map<X11GammaRamps::Controller, X11GammaRamp> X11GammaRamps::activeRamps() {
    if (!randr_.knowsControllers()) {
        return {};
    }
    if (!areControllersStale_) {
        std::map<Controller, X11GammaRamp> result = ramps(active_);
        // A change before the answer has been told of by now.
        connection_.readEvents();
        if (!areControllersStale_) {
            return result;
        }
    }
    readControllers();
    return ramps(active_);
}

void X11GammaRamps::readControllers() {
    areControllersStale_ = false;
    active_.clear();
    xcb_connection_t* const server = connection_.get();
    const X11Reply<xcb_randr_get_screen_resources_current_reply_t> resources(
        xcb_randr_get_screen_resources_current_reply(
            server, xcb_randr_get_screen_resources_current(server, connection_.root()), nullptr));
    if (!resources) {
        return;
    }
    const xcb_randr_crtc_t* first = xcb_randr_get_screen_resources_current_crtcs(resources.get());
    const std::vector<Controller> all(
        first, first + std::min<std::size_t>(resources->num_crtcs, X11KeptRamps::mostControllers));
    std::vector<xcb_randr_get_crtc_info_cookie_t> questions;
    questions.reserve(all.size());
    for (const Controller controller : all) {
        questions.push_back(
            xcb_randr_get_crtc_info(server, controller, resources->config_timestamp));
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        const X11Reply<xcb_randr_get_crtc_info_reply_t> info(
            xcb_randr_get_crtc_info_reply(server, questions[i], nullptr));
        if (info && info->mode != XCB_NONE) {
            active_.push_back(all[i]);
        }
    }
}

std::map<X11GammaRamps::Controller, X11GammaRamp> X11GammaRamps::ramps(
    const std::vector<Controller>& controllers) {
    xcb_connection_t* const server = connection_.get();
    std::vector<xcb_randr_get_crtc_gamma_cookie_t> questions;
    questions.reserve(controllers.size());
    for (const Controller controller : controllers) {
        questions.push_back(xcb_randr_get_crtc_gamma(server, controller));
    }
    std::map<Controller, X11GammaRamp> result;
    for (std::size_t i = 0; i < controllers.size(); ++i) {
        // Absent for a controller that has gone, as those of a docking station do.
        const X11Reply<xcb_randr_get_crtc_gamma_reply_t> reply(
            xcb_randr_get_crtc_gamma_reply(server, questions[i], nullptr));
        if (!reply || reply->size == 0 || reply->size > X11GammaRamp::largestSize) {
            continue;
        }
        X11GammaRamp& ramp = result[controllers[i]];
        for (const std::uint16_t* channel : {xcb_randr_get_crtc_gamma_red(reply.get()),
                                             xcb_randr_get_crtc_gamma_green(reply.get()),
                                             xcb_randr_get_crtc_gamma_blue(reply.get())}) {
            ramp.steps.insert(ramp.steps.end(), channel, channel + reply->size);
        }
    }
    return result;
}

void X11GammaRamps::set(Controller controller, const X11GammaRamp& ramp) {
    const std::size_t size = ramp.size();
    const std::uint16_t* red = ramp.steps.data();
    xcb_randr_set_crtc_gamma(connection_.get(), controller, static_cast<std::uint16_t>(size), red,
                             red + size, red + 2 * size);
}

bool X11GammaRamps::keepOriginals() {
    X11KeptRamps kept;
    for (const auto& [controller, dimmed] : dimmed_) {
        kept.ramps[controller] = dimmed.original;
    }
    const auto pieces = kept.encoded();
    if (!pieces) {
        return false;
    }
    std::uint8_t mode = XCB_PROP_MODE_REPLACE;
    for (const std::vector<std::uint32_t>& piece : *pieces) {
        xcb_change_property(connection_.get(), mode, connection_.root(), property_,
                            XCB_ATOM_CARDINAL, 32, static_cast<std::uint32_t>(piece.size()),
                            piece.data());
        mode = XCB_PROP_MODE_APPEND;
    }
    return true;
}

void X11GammaRamps::restoreKept() {
    xcb_connection_t* const server = connection_.get();
    const X11Property property(
        server, X11Property::ask(server, connection_.root(), property_, XCB_ATOM_CARDINAL,
                                 X11KeptRamps::longestForm));
    if (const auto kept = X11KeptRamps::decoded(property.items())) {
        std::vector<Controller> controllers;
        for (const auto& [controller, original] : kept->ramps) {
            controllers.push_back(controller);
        }
        for (const auto& [controller, ramp] : ramps(controllers)) {
            const X11GammaRamp& original = kept->ramps.at(controller);
            if (ramp != original && ramp.isDimmed(original)) {
                set(controller, original);
            }
        }
    }
    // Also when it cannot be read: nobody else could make anything of it either.
    xcb_delete_property(server, connection_.root(), property_);
    xcb_flush(server);
}

}  // namespace lumatile
