#include "platform/wayland/WaylandPictures.h"

#include <wayland-client.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace lumatile {

namespace {

constexpr int pixelBytes = 4;

// One that is shown, one that is about to be, one that is drawn, and one for a slow compositor.
constexpr std::size_t mostPictures = 4;

}  // namespace

struct WaylandPicture::Listeners {
    static constexpr wl_buffer_listener buffer = {
        .release =
            [](void* data, wl_buffer* /*buffer*/) {
                auto& picture = *static_cast<WaylandPicture*>(data);
                picture.isBusy_ = false;
                // It may give the picture back.
                const std::function<void()> released = picture.released_;
                released();
            },
    };
};

WaylandPicture::WaylandPicture(wl_shm* shm, int width, int height, std::function<void()> released)
    : width_(width),
      height_(height),
      released_(std::move(released)),
      memory_(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
    if (!memory_.isThere()) {
        return;
    }
    const WaylandHandle<wl_shm_pool> pool(
        wl_shm_create_pool(shm, memory_.fileDescriptor(), memory_.bytes()));
    buffer_.reset(wl_shm_pool_create_buffer(pool.get(), 0, width, height, width * pixelBytes,
                                            WL_SHM_FORMAT_ARGB8888));
    wl_buffer_add_listener(buffer_.get(), &Listeners::buffer, this);
}

WaylandPicture::~WaylandPicture() = default;

std::shared_ptr<WaylandPicture> WaylandPictures::free(int width, int height) {
    // Whoever else holds one still shows it, or will.
    const auto isFree = [](const std::shared_ptr<WaylandPicture>& picture) {
        return !picture->isBusy() && picture.use_count() == 1;
    };
    std::erase_if(pictures_, [&](const auto& picture) {
        return isFree(picture) && !picture->hasSize(width, height);
    });
    const auto found = std::find_if(pictures_.begin(), pictures_.end(), isFree);
    if (found != pictures_.end()) {
        return *found;
    }
    if (!shm_) {
        shm_ = connection_.bindFirst<wl_shm>(wl_shm_interface, 1);
    }
    if (!shm_ || pictures_.size() >= mostPictures) {
        return nullptr;
    }
    auto made = std::make_shared<WaylandPicture>(shm_.get(), width, height, released_);
    if (!made->isThere()) {
        return nullptr;
    }
    pictures_.push_back(made);
    return made;
}

void WaylandPictures::clear() { pictures_.clear(); }

}  // namespace lumatile
