#pragma once

#include <cstddef>
#include <cstdint>

#include "windows/AccessibilityPlatform.h"
#include "windows/Element.h"

namespace lumatile {

/// What an element of the X desktop stands for, as a value.
class X11Element final : public ElementHandle {
public:
    enum class Kind : std::uint8_t {
        systemWide,
        application,  ///< `value` is the process id.
        client,       ///< An application without a known process: `value` is the server's client.
        window,       ///< `value` is the window's id.
    };

    /// @param serial of a window that the mirror knows; 0 for everything else
    X11Element(Kind kind, std::int64_t value, std::uint64_t serial)
        : kind_(kind), value_(value), serial_(serial) {}

    Kind kind() const { return kind_; }
    std::int64_t value() const { return value_; }
    std::uint64_t serial() const { return serial_; }

    bool equals(const ElementHandle& other) const override;
    std::size_t hash() const override;

private:
    Kind kind_;
    std::int64_t value_;
    std::uint64_t serial_;
};

}  // namespace lumatile
