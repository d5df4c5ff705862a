#include "windows/AXRead.h"

namespace lumatile::AXRead {

std::optional<AXElement> element(AccessibilityPlatform& platform, const AXElement& of,
                                 std::string_view attribute) {
    std::optional<AXElement> read = value<AXElement>(platform, of, attribute);
    if (!read || !*read) {
        return std::nullopt;
    }
    return read;
}

std::optional<bool> boolean(AccessibilityPlatform& platform, const AXElement& element,
                            std::string_view attribute) {
    const std::optional<AXValue> read = platform.read(element, attribute);
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

}  // namespace lumatile::AXRead
