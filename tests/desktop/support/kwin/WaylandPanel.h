#pragma once

#include <cstddef>
#include <string>

#include "tests/desktop/support/kwin/WaylandClient.h"

struct wl_buffer;
struct wl_compositor;
struct wl_output;
struct wl_shm;
struct wl_surface;
struct zwlr_layer_shell_v1;
struct zwlr_layer_surface_v1;

namespace lumatile::desktop {

/// A panel along the lower edge of an output of a private compositor; its room is reserved as soon
/// as it exists.
class WaylandPanel : public WaylandClient {
public:
    /// @param output its name: "Virtual-0" …
    /// @param width of the output, logical pixels
    WaylandPanel(const std::string& socket, const std::string& output, int width, int height);
    WaylandPanel(const WaylandPanel&) = delete;
    WaylandPanel& operator=(const WaylandPanel&) = delete;
    ~WaylandPanel() override;

private:
    struct Output;
    struct PanelNews;

    wl_output* find(const std::string& output);
    void paint(int width, int height);

    wl_compositor* compositor_;
    wl_shm* memory_;
    zwlr_layer_shell_v1* shell_;
    wl_output* output_ = nullptr;
    wl_surface* surface_ = nullptr;
    zwlr_layer_surface_v1* panel_ = nullptr;
    wl_buffer* buffer_ = nullptr;
    bool isConfigured_ = false;
};

}  // namespace lumatile::desktop
