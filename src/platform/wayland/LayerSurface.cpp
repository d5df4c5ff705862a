#include "platform/wayland/LayerSurface.h"

#include <viewporter-client-protocol.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace lumatile {

namespace {

// KWin takes this for the kind of window: one above full-screen windows and notifications, and,
// what it does with surfaces of any other name, not animated as it comes and goes.
constexpr const char* scope = "on-screen-display";

// Panels do not push it aside.
constexpr int overPanels = -1;

constexpr std::uint32_t topLeft =
    ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT;
constexpr std::uint32_t everySide =
    topLeft | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;

void setPlace(zwlr_layer_surface_v1* layer, const Rect& place) {
    zwlr_layer_surface_v1_set_size(layer, static_cast<std::uint32_t>(place.width),
                                   static_cast<std::uint32_t>(place.height));
    zwlr_layer_surface_v1_set_margin(layer, static_cast<int>(place.y), 0, 0,
                                     static_cast<int>(place.x));
}

}  // namespace

struct LayerSurface::Listeners {
    static constexpr zwlr_layer_surface_v1_listener layer = {
        .configure =
            [](void* data, zwlr_layer_surface_v1* /*layer*/, std::uint32_t serial,
               std::uint32_t width, std::uint32_t height) {
                static_cast<LayerSurface*>(data)->configure(serial, width, height);
            },
        .closed =
            [](void* data, zwlr_layer_surface_v1* /*layer*/) {
                static_cast<LayerSurface*>(data)->close();
            },
    };
};

LayerSurface::LayerSurface(WaylandLayers& layers, wl_output* output)
    : LayerSurface(layers, output, nullptr) {}

LayerSurface::LayerSurface(WaylandLayers& layers, wl_output* output, const Rect& place)
    : LayerSurface(layers, output, &place) {}

LayerSurface::LayerSurface(WaylandLayers& layers, wl_output* output, const Rect* place)
    : fillsScreen_(place == nullptr),
      surface_(wl_compositor_create_surface(layers.compositor())),
      viewport_(wp_viewporter_get_viewport(layers.viewporter(), surface_.get())),
      layer_(zwlr_layer_shell_v1_get_layer_surface(layers.shell(), surface_.get(), output,
                                                   ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY, scope)) {
    zwlr_layer_surface_v1_add_listener(layer_.get(), &Listeners::layer, this);
    zwlr_layer_surface_v1_set_exclusive_zone(layer_.get(), overPanels);
    zwlr_layer_surface_v1_set_keyboard_interactivity(
        layer_.get(), ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE);
    if (place != nullptr) {
        zwlr_layer_surface_v1_set_anchor(layer_.get(), topLeft);
        move(*place);
    } else {
        zwlr_layer_surface_v1_set_anchor(layer_.get(), everySide);
    }
    const WaylandHandle<wl_region> nowhere(wl_compositor_create_region(layers.compositor()));
    wl_surface_set_input_region(surface_.get(), nowhere.get());
    wl_surface_commit(surface_.get());
}

LayerSurface::~LayerSurface() = default;

void LayerSurface::show(wl_buffer* buffer, std::function<void()> taken) {
    buffer_ = buffer;
    taken_ = std::move(taken);
    present();
}

void LayerSurface::move(const Rect& place) {
    if (layer_) {
        setPlace(layer_.get(), place);
    }
    width_ = static_cast<int>(place.width);
    height_ = static_cast<int>(place.height);
}

void LayerSurface::configure(std::uint32_t serial, std::uint32_t width, std::uint32_t height) {
    zwlr_layer_surface_v1_ack_configure(layer_.get(), serial);
    hasPlace_ = true;
    // A part of the screen has the size that was asked for, perhaps of late, and no other.
    if (fillsScreen_) {
        constexpr std::uint32_t most = std::numeric_limits<std::int16_t>::max();
        width_ = static_cast<int>(std::min(width, most));
        height_ = static_cast<int>(std::min(height, most));
    }
    present();
}

void LayerSurface::close() { layer_.reset(); }

void LayerSurface::present() {
    if (!layer_ || !hasPlace_ || buffer_ == nullptr || width_ <= 0 || height_ <= 0) {
        return;
    }
    wp_viewport_set_destination(viewport_.get(), width_, height_);
    wl_surface_attach(surface_.get(), buffer_, 0, 0);
    constexpr int everything = std::numeric_limits<std::int32_t>::max();
    wl_surface_damage_buffer(surface_.get(), 0, 0, everything, everything);
    wl_surface_commit(surface_.get());
    if (taken_) {
        taken_();
    }
}

}  // namespace lumatile
