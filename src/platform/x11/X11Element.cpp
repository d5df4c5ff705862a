#include "platform/x11/X11Element.h"

#include <functional>

namespace lumatile {

bool X11Element::equals(const ElementHandle& other) const {
    const auto* element = dynamic_cast<const X11Element*>(&other);
    return element != nullptr && kind_ == element->kind_ && value_ == element->value_ &&
           serial_ == element->serial_;
}

std::size_t X11Element::hash() const {
    // A window's id nearly always tells it apart; the few of one application differ in low bits.
    return std::hash<std::int64_t>{}(value_) ^ (std::hash<std::uint64_t>{}(serial_) << 20U) ^
           static_cast<std::size_t>(kind_);
}

}  // namespace lumatile
