#include "tests/desktop/support/ScreenArranger.h"

#include <algorithm>
#include <cstdint>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {
namespace {

std::uint32_t millimetres(int pixels) {
    return static_cast<std::uint32_t>(std::max(1.0, pixels * 25.4 / 96));
}

std::uint16_t narrow(int value) { return static_cast<std::uint16_t>(value); }

/// The desktop sees one change, not its steps. Ends also where a step fails: whoever says so needs
/// the server.
class ServerGrab {
public:
    explicit ServerGrab(XClient& client) : client_(client) {
        xcb_grab_server(client_.connection());
    }
    ServerGrab(const ServerGrab&) = delete;
    ServerGrab& operator=(const ServerGrab&) = delete;
    ~ServerGrab() {
        xcb_ungrab_server(client_.connection());
        client_.roundTrip();
    }

private:
    XClient& client_;
};

}  // namespace

ScreenArranger::ScreenArranger(const std::string& display) : client_(display) {
    const XReply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
        client_.connection(), xcb_randr_query_version(client_.connection(), 1, 5), nullptr));
    if (!version) {
        throw DesktopError("the server has no RandR");
    }
}

ScreenArranger::Resources ScreenArranger::resources() {
    const XReply<xcb_randr_get_screen_resources_reply_t> reply(xcb_randr_get_screen_resources_reply(
        client_.connection(), xcb_randr_get_screen_resources(client_.connection(), client_.root()),
        nullptr));
    if (!reply) {
        throw DesktopError("the server does not tell its outputs");
    }
    const xcb_randr_output_t* outputs = xcb_randr_get_screen_resources_outputs(reply.get());
    const xcb_randr_crtc_t* controllers = xcb_randr_get_screen_resources_crtcs(reply.get());
    const xcb_randr_mode_info_t* modes = xcb_randr_get_screen_resources_modes(reply.get());
    return {reply->config_timestamp,
            {outputs, outputs + reply->num_outputs},
            {controllers, controllers + reply->num_crtcs},
            {modes, modes + reply->num_modes}};
}

xcb_randr_mode_t ScreenArranger::mode(const Resources& resources, int width, int height) {
    for (const xcb_randr_mode_info_t& mode : resources.modes) {
        if (mode.width == width && mode.height == height) {
            return mode.id;
        }
    }
    // Any timing will do: nothing is connected.
    xcb_randr_mode_info_t info{};
    info.width = narrow(width);
    info.height = narrow(height);
    info.hsync_start = narrow(width + 8);
    info.hsync_end = narrow(width + 16);
    info.htotal = narrow(width + 24);
    info.vsync_start = narrow(height + 2);
    info.vsync_end = narrow(height + 4);
    info.vtotal = narrow(height + 6);
    info.dot_clock = std::uint32_t{info.htotal} * info.vtotal * 60;
    const std::string name = std::to_string(width) + "x" + std::to_string(height);
    info.name_len = narrow(static_cast<int>(name.size()));
    const XReply<xcb_randr_create_mode_reply_t> reply(xcb_randr_create_mode_reply(
        client_.connection(),
        xcb_randr_create_mode(client_.connection(), client_.root(), info,
                              static_cast<std::uint32_t>(name.size()), name.c_str()),
        nullptr));
    if (!reply) {
        throw DesktopError("the server refuses the mode " + name);
    }
    return reply->mode;
}

void ScreenArranger::configure(const Resources& resources, std::size_t index, int x, int y,
                               xcb_randr_mode_t mode) {
    const xcb_randr_output_t output = resources.outputs.at(index);
    if (mode != XCB_NONE) {
        // An error only says that the output has the mode already.
        xcb_randr_add_output_mode(client_.connection(), output, mode);
    }
    const XReply<xcb_randr_set_crtc_config_reply_t> reply(xcb_randr_set_crtc_config_reply(
        client_.connection(),
        xcb_randr_set_crtc_config(client_.connection(), resources.controllers.at(index),
                                  XCB_CURRENT_TIME, resources.time, static_cast<std::int16_t>(x),
                                  static_cast<std::int16_t>(y), mode, XCB_RANDR_ROTATION_ROTATE_0,
                                  mode == XCB_NONE ? 0 : 1, mode == XCB_NONE ? nullptr : &output),
        nullptr));
    if (!reply || reply->status != XCB_RANDR_SET_CONFIG_SUCCESS) {
        throw DesktopError("the server refuses monitor " + std::to_string(index) + ": " +
                           (reply ? std::to_string(reply->status) : "error"));
    }
}

bool ScreenArranger::isConfigured(const Resources& resources, std::size_t index,
                                  const PixelRect& monitor) {
    const XReply<xcb_randr_get_crtc_info_reply_t> info(xcb_randr_get_crtc_info_reply(
        client_.connection(),
        xcb_randr_get_crtc_info(client_.connection(), resources.controllers.at(index),
                                resources.time),
        nullptr));
    return info && PixelRect{info->x, info->y, info->width, info->height} == monitor;
}

void ScreenArranger::resizeRoot(const PixelRect& root) {
    const XReply<xcb_get_geometry_reply_t> now(xcb_get_geometry_reply(
        client_.connection(), xcb_get_geometry(client_.connection(), client_.root()), nullptr));
    if (now && now->width == root.width && now->height == root.height) {
        return;
    }
    xcb_randr_set_screen_size(client_.connection(), client_.root(), narrow(root.width),
                              narrow(root.height), millimetres(root.width),
                              millimetres(root.height));
}

void ScreenArranger::arrange(const MonitorLayout& layout) {
    const ServerGrab grab(client_);
    const Resources before = resources();
    if (before.controllers.size() < layout.monitors.size()) {
        throw DesktopError("the server has too few outputs for " + layout.name);
    }
    const PixelRect none;
    for (std::size_t index = 0; index < before.controllers.size(); ++index) {
        const PixelRect& wanted = index < layout.monitors.size() ? layout.monitors[index] : none;
        if (!isConfigured(before, index, wanted) && !isConfigured(before, index, none)) {
            configure(before, index, 0, 0, XCB_NONE);
        }
    }
    resizeRoot(layout.root());
    for (std::size_t index = 0; index < layout.monitors.size(); ++index) {
        const PixelRect& monitor = layout.monitors[index];
        if (!isConfigured(before, index, monitor)) {
            configure(before, index, monitor.x, monitor.y,
                      mode(before, monitor.width, monitor.height));
        }
    }
    xcb_randr_set_output_primary(client_.connection(), client_.root(),
                                 before.outputs.at(layout.primary));
    // The server asks an output whether it is connected only when somebody wants to know; until
    // then toolkits would read that it is not.
    static_cast<void>(resources());
}

void ScreenArranger::arrangeVirtually(const MonitorLayout& layout) {
    const Resources now = resources();
    for (std::size_t index = 0; index < layout.monitors.size(); ++index) {
        const PixelRect& monitor = layout.monitors[index];
        struct {
            xcb_randr_monitor_info_t info;
            xcb_randr_output_t output;
        } request{};
        request.info.name = client_.atom("MONITOR" + std::to_string(index));
        request.info.primary = index == layout.primary ? 1 : 0;
        request.info.automatic = 0;
        request.info.nOutput = index == 0 ? 1 : 0;  // An output belongs to one monitor.
        request.info.x = static_cast<std::int16_t>(monitor.x);
        request.info.y = static_cast<std::int16_t>(monitor.y);
        request.info.width = narrow(monitor.width);
        request.info.height = narrow(monitor.height);
        request.info.width_in_millimeters = millimetres(monitor.width);
        request.info.height_in_millimeters = millimetres(monitor.height);
        request.output = now.outputs.at(0);
        xcb_randr_delete_monitor(client_.connection(), client_.root(), request.info.name);
        xcb_randr_set_monitor(client_.connection(), client_.root(), &request.info);
    }
    client_.roundTrip();
}

void ScreenArranger::unplug(std::size_t monitor) {
    const ServerGrab grab(client_);
    configure(resources(), monitor, 0, 0, XCB_NONE);
    static_cast<void>(resources());
}

}  // namespace lumatile::desktop
