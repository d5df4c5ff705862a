#include "platform/wayland/SharedPixels.h"

#include <sys/mman.h>
#include <unistd.h>

#include <limits>

namespace lumatile {

namespace {

constexpr std::size_t mostPixels = std::numeric_limits<int>::max() / sizeof(std::uint32_t);

}  // namespace

SharedPixels::SharedPixels(std::size_t count)
    : count_(count), descriptor_(memfd_create("lumatile-pixels", MFD_CLOEXEC)) {
    if (descriptor_ < 0 || count == 0 || count > mostPixels ||
        ftruncate(descriptor_, static_cast<off_t>(bytes())) != 0) {
        return;
    }
    void* const memory = mmap(nullptr, static_cast<std::size_t>(bytes()), PROT_READ | PROT_WRITE,
                              MAP_SHARED, descriptor_, 0);
    if (memory != MAP_FAILED) {
        memory_ = static_cast<std::uint32_t*>(memory);
    }
}

SharedPixels::~SharedPixels() {
    if (memory_ != nullptr) {
        munmap(memory_, static_cast<std::size_t>(bytes()));
    }
    if (descriptor_ >= 0) {
        close(descriptor_);
    }
}

int SharedPixels::bytes() const { return static_cast<int>(count_ * sizeof(std::uint32_t)); }

}  // namespace lumatile
