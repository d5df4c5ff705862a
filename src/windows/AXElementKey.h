#pragma once

#include <cstddef>
#include <functional>
#include <utility>

#include "windows/Element.h"

namespace lumatile {

/// The hashable identity of a window, stable for as long as the window exists and equal for two
/// handles on the same window. Serves as the key of every map from windows to something.
struct AXElementKey {
    Element element;

    bool operator==(const AXElementKey& other) const {
        return element == other.element ||
               (element && other.element && element->equals(*other.element));
    }
};

}  // namespace lumatile

template <>
struct std::hash<lumatile::AXElementKey> {
    std::size_t operator()(const lumatile::AXElementKey& key) const noexcept {
        return key.element ? key.element->hash() : 0;
    }
};
