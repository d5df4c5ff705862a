#pragma once

#include "platform/wayland/SharedPixels.h"
#include "platform/wayland/WaylandHandle.h"
#include "tests/desktop/support/kwin/WaylandClient.h"

namespace lumatile::desktop {

/// Another program that has a surface in a layer of its own, as panels have.
class LayerClient : public WaylandClient {
public:
    struct Options {
        int width = 1;  ///< Of the surface, at the upper edge of a screen, in its middle.
        int height = 1;
        int reserved = 0;  ///< Kept free of windows along the upper edge.
    };

    /// Shown, white.
    LayerClient(const std::string& socket, const Options& options);
    LayerClient(const LayerClient&) = delete;
    LayerClient& operator=(const LayerClient&) = delete;
    ~LayerClient() override = default;

protected:
    wl_surface* surface() { return surface_.get(); }

private:
    struct Listeners;

    SharedPixels pixels_;
    WaylandHandle<wl_compositor> compositor_;
    WaylandHandle<wl_shm> shm_;
    WaylandHandle<zwlr_layer_shell_v1> shell_;
    WaylandHandle<wl_surface> surface_;
    WaylandHandle<zwlr_layer_surface_v1> layer_;
    WaylandHandle<wl_buffer> picture_;
    bool hasPlace_ = false;
};

}  // namespace lumatile::desktop
