#include "tests/desktop/support/kwin/WaylandPanel.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>
#include <wlr-layer-shell-unstable-v1-client-protocol.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

namespace {

constexpr std::uint32_t outputVersion = 4;  // The first with names.

}  // namespace

struct WaylandPanel::Output {
    wl_output* output = nullptr;
    std::string name;
};

struct WaylandPanel::PanelNews {
    template <typename... Arguments>
    static void nothing(void* /*output*/, wl_output* /*proxy*/, Arguments... /*arguments*/) {}
    static void name(void* data, wl_output* /*proxy*/, const char* name) {
        static_cast<Output*>(data)->name = name;
    }
    static void configured(void* self, zwlr_layer_surface_v1* proxy, std::uint32_t serial,
                           std::uint32_t /*width*/, std::uint32_t /*height*/) {
        zwlr_layer_surface_v1_ack_configure(proxy, serial);
        static_cast<WaylandPanel*>(self)->isConfigured_ = true;
    }
    static void closed(void* /*self*/, zwlr_layer_surface_v1* /*panel*/) {}

    static constexpr wl_output_listener output{.geometry = nothing,
                                               .mode = nothing,
                                               .done = nothing,
                                               .scale = nothing,
                                               .name = name,
                                               .description = nothing};
    static constexpr zwlr_layer_surface_v1_listener panel{configured, closed};
};

WaylandPanel::WaylandPanel(const std::string& socket, const std::string& output, int width,
                           int height)
    : WaylandClient(socket),
      compositor_(static_cast<wl_compositor*>(bindOnly(wl_compositor_interface, 4))),
      memory_(static_cast<wl_shm*>(bindOnly(wl_shm_interface, 1))),
      shell_(static_cast<zwlr_layer_shell_v1*>(bindOnly(zwlr_layer_shell_v1_interface, 3))),
      output_(find(output)),
      surface_(wl_compositor_create_surface(compositor_)),
      panel_(zwlr_layer_shell_v1_get_layer_surface(shell_, surface_, output_,
                                                   ZWLR_LAYER_SHELL_V1_LAYER_TOP, "test-panel")) {
    zwlr_layer_surface_v1_add_listener(panel_, &PanelNews::panel, this);
    zwlr_layer_surface_v1_set_anchor(panel_, ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                                                 ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT |
                                                 ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT);
    zwlr_layer_surface_v1_set_size(panel_, 0, static_cast<std::uint32_t>(height));
    zwlr_layer_surface_v1_set_exclusive_zone(panel_, height);
    wl_surface_commit(surface_);
    if (!waitForEvents([this] { return isConfigured_; })) {
        throw DesktopError("the compositor takes no panel");
    }
    paint(width, height);
    roundTrip();
}

WaylandPanel::~WaylandPanel() {
    zwlr_layer_surface_v1_destroy(panel_);
    wl_surface_destroy(surface_);
    wl_buffer_destroy(buffer_);
    wl_output_destroy(output_);
    zwlr_layer_shell_v1_destroy(shell_);
    wl_shm_destroy(memory_);
    wl_compositor_destroy(compositor_);
}

wl_output* WaylandPanel::find(const std::string& output) {
    std::vector<std::unique_ptr<Output>> outputs;
    for (const Global& global : globals(wl_output_interface.name)) {
        auto each = std::make_unique<Output>();
        each->output = static_cast<wl_output*>(bind(global, wl_output_interface, outputVersion));
        wl_output_add_listener(each->output, &PanelNews::output, each.get());
        outputs.push_back(std::move(each));
    }
    roundTrip();
    wl_output* found = nullptr;
    for (const auto& each : outputs) {
        if (each->name == output) {
            found = each->output;
            wl_output_set_user_data(found, nullptr);
        } else {
            wl_output_destroy(each->output);
        }
    }
    if (found == nullptr) {
        throw DesktopError("no output " + output);
    }
    return found;
}

void WaylandPanel::paint(int width, int height) {
    constexpr int bytesPerPixel = 4;
    constexpr std::uint32_t color = 0xff202428;
    const int stride = width * bytesPerPixel;
    const auto size = static_cast<std::size_t>(stride) * static_cast<std::size_t>(height);
    const int file = memfd_create("panel", MFD_CLOEXEC);
    const std::vector<std::uint32_t> pixels(size / bytesPerPixel, color);
    if (file < 0 || write(file, pixels.data(), size) != static_cast<ssize_t>(size)) {
        throw DesktopError("no memory for the panel");
    }
    wl_shm_pool* pool = wl_shm_create_pool(memory_, file, static_cast<std::int32_t>(size));
    close(file);
    buffer_ = wl_shm_pool_create_buffer(pool, 0, width, height, stride, WL_SHM_FORMAT_ARGB8888);
    wl_shm_pool_destroy(pool);
    wl_surface_attach(surface_, buffer_, 0, 0);
    wl_surface_damage(surface_, 0, 0, width, height);
    wl_surface_commit(surface_);
}

}  // namespace lumatile::desktop
