#include "tests/desktop/wayland/Film.h"

#include <idle-inhibit-unstable-v1-client-protocol.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

struct Film::Listeners {
    static constexpr zwlr_layer_surface_v1_listener layer = {
        .configure =
            [](void* data, zwlr_layer_surface_v1* surface, std::uint32_t serial,
               std::uint32_t /*width*/, std::uint32_t /*height*/) {
                zwlr_layer_surface_v1_ack_configure(surface, serial);
                static_cast<Film*>(data)->hasPlace_ = true;
            },
        .closed = [](void* /*data*/, zwlr_layer_surface_v1* /*surface*/) {},
    };
};

Film::Film(const std::string& socket)
    : WaylandClient(socket),
      compositor_(static_cast<wl_compositor*>(bindOnly(wl_compositor_interface, 4))),
      shm_(static_cast<wl_shm*>(bindOnly(wl_shm_interface, 1))),
      shell_(static_cast<zwlr_layer_shell_v1*>(bindOnly(zwlr_layer_shell_v1_interface, 3))),
      inhibition_(static_cast<zwp_idle_inhibit_manager_v1*>(
          bindOnly(zwp_idle_inhibit_manager_v1_interface, 1))),
      surface_(wl_compositor_create_surface(compositor_.get())),
      layer_(zwlr_layer_shell_v1_get_layer_surface(shell_.get(), surface_.get(), nullptr,
                                                   ZWLR_LAYER_SHELL_V1_LAYER_TOP, "film")) {
    zwlr_layer_surface_v1_add_listener(layer_.get(), &Listeners::layer, this);
    zwlr_layer_surface_v1_set_size(layer_.get(), 1, 1);
    wl_surface_commit(surface_.get());
    if (!waitForEvents([this] { return hasPlace_; })) {
        throw DesktopError("no place for a film");
    }
    const WaylandHandle<wl_shm_pool> pool(
        wl_shm_create_pool(shm_.get(), pixels_.fileDescriptor(), pixels_.bytes()));
    picture_.reset(
        wl_shm_pool_create_buffer(pool.get(), 0, 1, 1, pixels_.bytes(), WL_SHM_FORMAT_XRGB8888));
    wl_surface_attach(surface_.get(), picture_.get(), 0, 0);
    wl_surface_commit(surface_.get());
    roundTrip();
}

Film::~Film() {
    if (inhibitor_ != nullptr) {
        zwp_idle_inhibitor_v1_destroy(inhibitor_);
    }
    zwp_idle_inhibit_manager_v1_destroy(inhibition_);
}

void Film::begin() {
    inhibitor_ = zwp_idle_inhibit_manager_v1_create_inhibitor(inhibition_, surface_.get());
    wl_surface_commit(surface_.get());
    roundTrip();
}

void Film::end() {
    zwp_idle_inhibitor_v1_destroy(inhibitor_);
    inhibitor_ = nullptr;
    roundTrip();
}

}  // namespace lumatile::desktop
