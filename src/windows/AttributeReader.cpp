#include "windows/AttributeReader.h"

namespace lumatile::AttributeReader {

std::optional<Element> element(AccessibilityPlatform& platform, const Element& of,
                               std::string_view attribute) {
    std::optional<Element> read = value<Element>(platform, of, attribute);
    if (!read || !*read) {
        return std::nullopt;
    }
    return read;
}

std::optional<bool> boolean(AccessibilityPlatform& platform, const Element& element,
                            std::string_view attribute) {
    const std::optional<AttributeValue> read = platform.read(element, attribute);
    if (!read) {
        return std::nullopt;
    }
    if (const bool* flag = std::get_if<bool>(&*read)) {
        return *flag;
    }
    if (const double* number = std::get_if<double>(&*read)) {
        return *number != 0;
    }
    return std::nullopt;
}

}  // namespace lumatile::AttributeReader
