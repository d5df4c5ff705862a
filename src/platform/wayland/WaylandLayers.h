#pragma once

#include "platform/wayland/WaylandConnection.h"

namespace lumatile {

/// What surfaces above all windows are made with, as far as the compositor offers it.
class WaylandLayers {
public:
    /// @param connection outlives this
    explicit WaylandLayers(WaylandConnection& connection);
    WaylandLayers(const WaylandLayers&) = delete;
    WaylandLayers& operator=(const WaylandLayers&) = delete;
    ~WaylandLayers() = default;

    /// Whether there can be such surfaces. Without this nothing below may be asked for.
    bool isAvailable() const { return compositor_ && shell_ && viewporter_; }

    wl_compositor* compositor() const { return compositor_.get(); }
    zwlr_layer_shell_v1* shell() const { return shell_.get(); }
    wp_viewporter* viewporter() const { return viewporter_.get(); }

private:
    void add(const WaylandGlobal& global);

    WaylandConnection& connection_;
    WaylandHandle<wl_compositor> compositor_;
    WaylandHandle<zwlr_layer_shell_v1> shell_;
    WaylandHandle<wp_viewporter> viewporter_;
    WaylandConnection::Subscription appearing_;
};

}  // namespace lumatile
