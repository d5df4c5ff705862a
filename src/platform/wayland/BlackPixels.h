#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/wayland/WaylandConnection.h"

namespace lumatile {

/// Pictures of one black pixel, in every opacity that a pixel of a screen can have. They are never
/// written again once they are handed out, so nobody has to know which of them is still shown.
class BlackPixels {
public:
    /// @param connection outlives this
    explicit BlackPixels(WaylandConnection& connection) : connection_(connection) {}

    /// @param opacity from 0 (clear) to 1 (black)
    /// @return the same one each time for the same shade; nothing where the compositor takes no
    ///         pictures. There until `clear`.
    wl_buffer* withOpacity(double opacity);

    /// Gives them all back.
    void clear();

private:
    static constexpr std::size_t shades = 256;

    WaylandHandle<wl_buffer> make(std::uint8_t shade);
    bool makePool();

    WaylandConnection& connection_;
    WaylandHandle<wp_single_pixel_buffer_manager_v1> manager_;
    WaylandHandle<wl_shm_pool> pool_;  ///< Of all the shades, in their order.
    std::array<WaylandHandle<wl_buffer>, shades> pixels_;
};

}  // namespace lumatile
