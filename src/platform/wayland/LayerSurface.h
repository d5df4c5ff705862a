#pragma once

#include <cstdint>
#include <functional>

#include "geometry/Rect.h"
#include "platform/wayland/WaylandHandle.h"
#include "platform/wayland/WaylandLayers.h"

namespace lumatile {

/// A surface above full-screen windows and panels on one screen. It takes no room from anybody,
/// never has the focus, and clicks go through it to what is below.
class LayerSurface {
public:
    /// Over the whole screen, whatever its size is and becomes.
    /// @param layers available; outlives this
    /// @param output what is shown goes with it
    LayerSurface(WaylandLayers& layers, wl_output* output);

    /// Over a part of the screen.
    /// @param place whole numbers; the compositor's space less the output's origin
    LayerSurface(WaylandLayers& layers, wl_output* output, const Rect& place);

    LayerSurface(const LayerSurface&) = delete;
    LayerSurface& operator=(const LayerSurface&) = delete;
    ~LayerSurface();

    /// Has it show this picture, stretched over all of it, from the moment on when the compositor
    /// has given it its place.
    /// @param buffer there as long as it is shown
    /// @param taken called when the compositor has been given the buffer, which from then on may
    /// not
    ///        be changed; kept as long as it is shown
    void show(wl_buffer* buffer, std::function<void()> taken = {});

    /// Moves it to another part of its screen. What it shows next is shown there.
    void move(const Rect& place);

private:
    struct Listeners;

    LayerSurface(WaylandLayers& layers, wl_output* output, const Rect* place);

    void configure(std::uint32_t serial, std::uint32_t width, std::uint32_t height);
    void close();
    void present();

    bool fillsScreen_;
    bool hasPlace_ = false;  ///< Once the compositor has given it one.
    wl_buffer* buffer_ = nullptr;
    std::function<void()> taken_;
    int width_ = 0;
    int height_ = 0;
    WaylandHandle<wl_surface> surface_;
    WaylandHandle<wp_viewport> viewport_;
    WaylandHandle<zwlr_layer_surface_v1> layer_;  ///< Nothing once the compositor has closed it.
};

}  // namespace lumatile
