#include "platform/wayland/BlackPixels.h"

#include <single-pixel-buffer-v1-client-protocol.h>
#include <wayland-client.h>

#include <cmath>
#include <span>
#include <vector>

#include "platform/wayland/SharedPixels.h"

namespace lumatile {

namespace {

constexpr int pixelBytes = 4;
constexpr int alphaShift = 24;
constexpr double fullShade = 255;

// The whole of 32 bits for the whole of 8.
constexpr std::uint32_t widened = 0x01010101;

}  // namespace

wl_buffer* BlackPixels::withOpacity(double opacity) {
    const auto shade = static_cast<std::uint8_t>(std::lround(opacity * fullShade));
    WaylandHandle<wl_buffer>& pixel = pixels_.at(shade);
    if (!pixel) {
        pixel = make(shade);
    }
    return pixel.get();
}

void BlackPixels::clear() {
    for (WaylandHandle<wl_buffer>& pixel : pixels_) {
        pixel.reset();
    }
    pool_.reset();
    manager_.reset();
}

WaylandHandle<wl_buffer> BlackPixels::make(std::uint8_t shade) {
    if (!manager_) {
        manager_ = connection_.bindFirst<wp_single_pixel_buffer_manager_v1>(
            wp_single_pixel_buffer_manager_v1_interface, 1);
    }
    if (manager_) {
        return WaylandHandle<wl_buffer>(wp_single_pixel_buffer_manager_v1_create_u32_rgba_buffer(
            manager_.get(), 0, 0, 0, shade * widened));
    }
    if (!pool_ && !makePool()) {
        return nullptr;
    }
    return WaylandHandle<wl_buffer>(wl_shm_pool_create_buffer(pool_.get(), shade * pixelBytes, 1, 1,
                                                              pixelBytes, WL_SHM_FORMAT_ARGB8888));
}

bool BlackPixels::makePool() {
    const auto shm = connection_.bindFirst<wl_shm>(wl_shm_interface, 1);
    const SharedPixels memory(shades);
    if (!shm || !memory.isThere()) {
        return false;
    }
    std::uint32_t shade = 0;
    for (std::uint32_t& pixel : memory.pixels()) {
        pixel = shade++ << alphaShift;
    }
    pool_.reset(wl_shm_create_pool(shm.get(), memory.fileDescriptor(), memory.bytes()));
    return true;
}

}  // namespace lumatile
