#pragma once

#include <optional>
#include <string_view>
#include <utility>
#include <variant>

#include "windows/AccessibilityPlatform.h"

/// Reads of attributes as the type that is wanted.
namespace lumatile::AttributeReader {

/// Absent when the attribute cannot be read or holds another type.
template <typename Wanted>
std::optional<Wanted> value(AccessibilityPlatform& platform, const Element& element,
                            std::string_view attribute) {
    std::optional<AttributeValue> read = platform.read(element, attribute);
    if (!read) {
        return std::nullopt;
    }
    if (Wanted* wanted = std::get_if<Wanted>(&*read)) {
        return std::move(*wanted);
    }
    return std::nullopt;
}

/// An element that is one: absent also where an adapter answers an empty handle.
std::optional<Element> element(AccessibilityPlatform& platform, const Element& of,
                               std::string_view attribute);

/// A boolean, or a number by its truth value (0 is false); absent for every other type.
std::optional<bool> boolean(AccessibilityPlatform& platform, const Element& element,
                            std::string_view attribute);

}  // namespace lumatile::AttributeReader
