#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "platform/wayland/SharedPixels.h"
#include "platform/wayland/WaylandConnection.h"

namespace lumatile {

/// Pixels that a compositor can show.
class WaylandPicture {
public:
    /// @param released called when nobody reads it any more
    WaylandPicture(wl_shm* shm, int width, int height, std::function<void()> released);
    WaylandPicture(const WaylandPicture&) = delete;
    WaylandPicture& operator=(const WaylandPicture&) = delete;
    ~WaylandPicture();

    /// False when there was no memory to have.
    bool isThere() const { return buffer_ != nullptr; }

    bool hasSize(int width, int height) const { return width == width_ && height == height_; }
    std::span<std::uint32_t> pixels() const { return memory_.pixels(); }

    wl_buffer* buffer() const { return buffer_.get(); }

    /// The compositor has been given it, and reads it from now on.
    void noteTaken() { isBusy_ = true; }

    /// Whether the compositor may still be reading it.
    bool isBusy() const { return isBusy_; }

private:
    struct Listeners;

    int width_;
    int height_;
    std::function<void()> released_;
    SharedPixels memory_;
    WaylandHandle<wl_buffer> buffer_;
    bool isBusy_ = false;
};

/// A few pictures of one size, to be drawn in turn while the compositor still reads others.
class WaylandPictures {
public:
    /// @param connection outlives the pictures
    /// @param released called when one may have become free
    WaylandPictures(WaylandConnection& connection, std::function<void()> released)
        : connection_(connection), released_(std::move(released)) {}

    /// One that nobody reads, with whatever was drawn on it last; those of another size that nobody
    /// reads are given back.
    /// @return nothing when all are read, or there is no memory to have
    std::shared_ptr<WaylandPicture> free(int width, int height);

    /// Gives back what is not held elsewhere.
    void clear();

private:
    WaylandConnection& connection_;
    std::function<void()> released_;
    WaylandHandle<wl_shm> shm_;
    std::vector<std::shared_ptr<WaylandPicture>> pictures_;
};

}  // namespace lumatile
