#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace lumatile {

/// Memory for pixels that the compositor reads too.
class SharedPixels {
public:
    /// Zeroed.
    /// @param count of pixels
    explicit SharedPixels(std::size_t count);
    SharedPixels(const SharedPixels&) = delete;
    SharedPixels& operator=(const SharedPixels&) = delete;
    ~SharedPixels();

    /// False when the system has no memory to give; nothing else may be asked for then.
    bool isThere() const { return memory_ != nullptr; }

    std::span<std::uint32_t> pixels() const { return {memory_, count_}; }
    int fileDescriptor() const { return descriptor_; }
    int bytes() const;

private:
    std::size_t count_;
    int descriptor_;
    std::uint32_t* memory_ = nullptr;
};

}  // namespace lumatile
