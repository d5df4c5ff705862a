#include "platform/wayland/WaylandDimOverlays.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace lumatile {

WaylandDimOverlays::WaylandDimOverlays(WaylandConnection& connection, WaylandLayers& layers,
                                       WaylandOutputs& outputs)
    : layers_(layers),
      outputs_(outputs),
      pixels_(connection),
      subscription_(outputs.observe([this] {
          if (opacity_ > 0) {
              apply();
          }
      })) {}

WaylandDimOverlays::~WaylandDimOverlays() = default;

void WaylandDimOverlays::rebuild() {
    opacity_ = 0;
    clear();
}

void WaylandDimOverlays::setOpacity(double opacity) {
    opacity_ = std::isnan(opacity) ? 0 : std::clamp(opacity, 0.0, 1.0);
    if (opacity_ > 0) {
        apply();
    } else {
        clear();
    }
}

void WaylandDimOverlays::apply() {
    if (!layers_.isAvailable()) {
        return;
    }
    wl_buffer* const pixel = pixels_.withOpacity(opacity_);
    if (pixel == nullptr) {
        return;
    }
    meetOutputs();
    for (const auto& [output, surface] : surfaces_) {
        surface->show(pixel);
    }
}

void WaylandDimOverlays::clear() {
    surfaces_.clear();
    pixels_.clear();
}

void WaylandDimOverlays::meetOutputs() {
    const std::vector<WaylandOutput> outputs = outputs_.list();
    std::erase_if(surfaces_, [&](const auto& entry) {
        return std::none_of(outputs.begin(), outputs.end(), [&](const WaylandOutput& output) {
            return output.object == entry.first;
        });
    });
    for (const WaylandOutput& output : outputs) {
        std::unique_ptr<LayerSurface>& surface = surfaces_[output.object];
        if (!surface) {
            surface = std::make_unique<LayerSurface>(layers_, output.object);
        }
    }
}

}  // namespace lumatile
