#pragma once

#include "platform/wayland/SharedPixels.h"
#include "platform/wayland/WaylandHandle.h"
#include "tests/desktop/support/kwin/WaylandClient.h"

struct zwp_idle_inhibit_manager_v1;
struct zwp_idle_inhibitor_v1;

namespace lumatile::desktop {

/// Another program that has something to show undisturbed, as players of films have.
class Film : public WaylandClient {
public:
    /// Shown, not yet begun.
    explicit Film(const std::string& socket);
    Film(const Film&) = delete;
    Film& operator=(const Film&) = delete;
    ~Film() override;

    /// The screens are to stay as they are from now on.
    void begin();
    void end();

private:
    struct Listeners;

    SharedPixels pixels_{1};
    WaylandHandle<wl_compositor> compositor_;
    WaylandHandle<wl_shm> shm_;
    WaylandHandle<zwlr_layer_shell_v1> shell_;
    zwp_idle_inhibit_manager_v1* inhibition_;
    WaylandHandle<wl_surface> surface_;
    WaylandHandle<zwlr_layer_surface_v1> layer_;
    WaylandHandle<wl_buffer> picture_;
    zwp_idle_inhibitor_v1* inhibitor_ = nullptr;
    bool hasPlace_ = false;
};

}  // namespace lumatile::desktop
