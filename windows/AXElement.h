#pragma once

#include <cstddef>
#include <memory>

namespace lumatile {

/// An opaque handle on something of another program: an application, a window, a part of a window.
/// Adapters derive from it; nobody else looks inside.
class AXElementHandle {
public:
    AXElementHandle() = default;
    AXElementHandle(const AXElementHandle&) = delete;
    AXElementHandle& operator=(const AXElementHandle&) = delete;
    virtual ~AXElementHandle() = default;

    /// True when both handles stand for the same thing, also when they come from separate reads.
    virtual bool equals(const AXElementHandle& other) const = 0;

    /// Equal handles have equal hashes.
    virtual std::size_t hash() const = 0;
};

/// Shared ownership of a handle; never null where a function takes or returns one.
using AXElement = std::shared_ptr<const AXElementHandle>;

}  // namespace lumatile
