#include "tests/desktop/wayland/Film.h"

#include <idle-inhibit-unstable-v1-client-protocol.h>
#include <wayland-client.h>

namespace lumatile::desktop {

Film::Film(const std::string& socket)
    : LayerClient(socket, {}),
      inhibition_(static_cast<zwp_idle_inhibit_manager_v1*>(
          bindOnly(zwp_idle_inhibit_manager_v1_interface, 1))) {}

Film::~Film() {
    if (inhibitor_ != nullptr) {
        zwp_idle_inhibitor_v1_destroy(inhibitor_);
    }
    zwp_idle_inhibit_manager_v1_destroy(inhibition_);
}

void Film::begin() {
    inhibitor_ = zwp_idle_inhibit_manager_v1_create_inhibitor(inhibition_, surface());
    wl_surface_commit(surface());
    roundTrip();
}

void Film::end() {
    zwp_idle_inhibitor_v1_destroy(inhibitor_);
    inhibitor_ = nullptr;
    roundTrip();
}

}  // namespace lumatile::desktop
