#include "tests/desktop/wayland/LayerClient.h"

#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

#include <algorithm>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

struct LayerClient::Listeners {
    static constexpr zwlr_layer_surface_v1_listener layer = {
        .configure =
            [](void* data, zwlr_layer_surface_v1* surface, std::uint32_t serial,
               std::uint32_t /*width*/, std::uint32_t /*height*/) {
                zwlr_layer_surface_v1_ack_configure(surface, serial);
                static_cast<LayerClient*>(data)->hasPlace_ = true;
            },
        .closed = [](void* /*data*/, zwlr_layer_surface_v1* /*surface*/) {},
    };
};

LayerClient::LayerClient(const std::string& socket, const Options& options)
    : WaylandClient(socket),
      pixels_(static_cast<std::size_t>(options.width) * static_cast<std::size_t>(options.height)),
      compositor_(static_cast<wl_compositor*>(bindOnly(wl_compositor_interface, 4))),
      shm_(static_cast<wl_shm*>(bindOnly(wl_shm_interface, 1))),
      shell_(static_cast<zwlr_layer_shell_v1*>(bindOnly(zwlr_layer_shell_v1_interface, 3))),
      surface_(wl_compositor_create_surface(compositor_.get())),
      layer_(zwlr_layer_shell_v1_get_layer_surface(shell_.get(), surface_.get(), nullptr,
                                                   ZWLR_LAYER_SHELL_V1_LAYER_TOP, "other")) {
    std::fill(pixels_.pixels().begin(), pixels_.pixels().end(), 0xffffffffU);
    zwlr_layer_surface_v1_add_listener(layer_.get(), &Listeners::layer, this);
    zwlr_layer_surface_v1_set_size(layer_.get(), static_cast<std::uint32_t>(options.width),
                                   static_cast<std::uint32_t>(options.height));
    zwlr_layer_surface_v1_set_anchor(layer_.get(), ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP);
    zwlr_layer_surface_v1_set_exclusive_zone(layer_.get(), options.reserved);
    wl_surface_commit(surface_.get());
    if (!waitForEvents([this] { return hasPlace_; })) {
        throw DesktopError("no place for a surface");
    }
    const WaylandHandle<wl_shm_pool> pool(
        wl_shm_create_pool(shm_.get(), pixels_.fileDescriptor(), pixels_.bytes()));
    picture_.reset(wl_shm_pool_create_buffer(pool.get(), 0, options.width, options.height,
                                             pixels_.bytes() / options.height,
                                             WL_SHM_FORMAT_XRGB8888));
    wl_surface_attach(surface_.get(), picture_.get(), 0, 0);
    wl_surface_commit(surface_.get());
    roundTrip();
}

}  // namespace lumatile::desktop
