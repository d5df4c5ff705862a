#pragma once

#include <cstddef>
#include <memory>

namespace lumatile {

/// An opaque handle on something of another program: an application, a window, a part of a window.
/// Adapters derive from it; nobody else looks inside.
class ElementHandle {
public:
    ElementHandle() = default;
    ElementHandle(const ElementHandle&) = delete;
    ElementHandle& operator=(const ElementHandle&) = delete;
    virtual ~ElementHandle() = default;

    /// True when both handles stand for the same thing, also when they come from separate reads.
    virtual bool equals(const ElementHandle& other) const = 0;

    /// Equal handles have equal hashes.
    virtual std::size_t hash() const = 0;
};

/// Shared ownership of a handle; never null where a function takes or returns one.
using Element = std::shared_ptr<const ElementHandle>;

}  // namespace lumatile
