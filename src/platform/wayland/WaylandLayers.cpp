#include "platform/wayland/WaylandLayers.h"

#include <viewporter-client-protocol.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

#include <cstdint>

namespace lumatile {

namespace {

constexpr std::uint32_t compositorVersion = 4;
constexpr std::uint32_t shellVersion = 3;
constexpr std::uint32_t viewporterVersion = 1;

}  // namespace

WaylandLayers::WaylandLayers(WaylandConnection& connection)
    : connection_(connection),
      appearing_(
          connection.observeAppearing([this](const WaylandGlobal& global) { add(global); })) {
    for (const WaylandGlobal& global : connection.globals()) {
        add(global);
    }
}

void WaylandLayers::add(const WaylandGlobal& global) {
    if (global.interface == wl_compositor_interface.name && !compositor_) {
        compositor_ =
            connection_.bind<wl_compositor>(global, wl_compositor_interface, compositorVersion);
    } else if (global.interface == zwlr_layer_shell_v1_interface.name && !shell_) {
        shell_ = connection_.bind<zwlr_layer_shell_v1>(global, zwlr_layer_shell_v1_interface,
                                                       shellVersion);
    } else if (global.interface == wp_viewporter_interface.name && !viewporter_) {
        viewporter_ =
            connection_.bind<wp_viewporter>(global, wp_viewporter_interface, viewporterVersion);
    }
}

}  // namespace lumatile
