#include "platform/wayland/WaylandHighlight.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace lumatile {

namespace {

/// A premultiplied pixel in a part of its opacity, two of its bytes at a time.
/// @param part 256 for the whole
std::uint32_t faded(std::uint32_t pixel, std::uint32_t part) {
    constexpr std::uint32_t everySecond = 0x00ff00ff;
    constexpr unsigned byte = 8;
    const std::uint32_t lower = ((pixel & everySecond) * part) >> byte;
    const std::uint32_t upper = ((pixel >> byte) & everySecond) * part;
    return (lower & everySecond) | (upper & ~everySecond);
}

}  // namespace

WaylandHighlight::WaylandHighlight(WaylandConnection& connection, WaylandLayers& layers,
                                   WaylandOutputs& outputs, std::function<Point()> origin)
    : layers_(layers),
      outputs_(outputs),
      origin_(std::move(origin)),
      pictures_(connection, [this] { drawWanted(); }),
      subscription_(outputs.observe([this] {
          // It was drawn for a screen that is gone, or is another one now.
          const std::vector<WaylandOutput> list = outputs_.list();
          if (place_ && std::find(list.begin(), list.end(), place_->output) == list.end()) {
              hide();
          }
      })) {}

WaylandHighlight::~WaylandHighlight() = default;

bool WaylandHighlight::show(const Rect& frame, const Draw& draw) {
    const Point origin = origin_();
    const std::optional<LayerPlace> place =
        layerPlace(frame.offsetBy(origin.x, origin.y), outputs_.list());
    if (!place || !isAvailable()) {
        hide();
        return false;
    }
    wanted_ = {*place, draw};
    drawWanted();
    return true;
}

void WaylandHighlight::drawWanted() {
    if (!wanted_) {
        return;
    }
    const LayerPlace& place = wanted_->place;
    std::shared_ptr<WaylandPicture> picture = pictures_.free(place.width, place.height);
    if (!picture) {
        return;
    }
    std::fill(picture->pixels().begin(), picture->pixels().end(), 0U);
    wanted_->draw({picture->pixels(), place.width, place.height, place.output.scale, place.panel});
    drawn_ = std::move(picture);
    if (!surface_ || place_->output != place.output) {
        surface_ = std::make_unique<LayerSurface>(layers_, place.output.object, place.surface);
        hasPicture_ = false;
    } else {
        surface_->move(place.surface);
    }
    place_ = place;
    wanted_.reset();
    present();
}

void WaylandHighlight::setOpacity(double opacity) {
    opacity_ = std::isnan(opacity) ? 0 : std::clamp(opacity, 0.0, 1.0);
    present();
}

void WaylandHighlight::hide() {
    surface_.reset();
    hasPicture_ = false;
    wanted_.reset();
    place_.reset();
    drawn_.reset();
}

void WaylandHighlight::release() {
    hide();
    pictures_.clear();
}

void WaylandHighlight::present() {
    if (!surface_ || (opacity_ <= 0 && !hasPicture_)) {
        return;
    }
    // While the compositor reads all that there are, a step of a fade is left out.
    if (const std::shared_ptr<WaylandPicture> next = opacity_ < 1 ? faded() : drawn_) {
        surface_->show(next->buffer(), [next] { next->noteTaken(); });
        hasPicture_ = true;
    }
}

std::shared_ptr<WaylandPicture> WaylandHighlight::faded() {
    std::shared_ptr<WaylandPicture> picture = pictures_.free(place_->width, place_->height);
    if (picture) {
        constexpr double whole = 256;
        const auto part = static_cast<std::uint32_t>(std::lround(opacity_ * whole));
        std::transform(drawn_->pixels().begin(), drawn_->pixels().end(), picture->pixels().begin(),
                       [part](std::uint32_t pixel) { return lumatile::faded(pixel, part); });
    }
    return picture;
}

}  // namespace lumatile
