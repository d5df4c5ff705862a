#include "platform/freedesktop/bus/DisplayToken.h"

#include <array>

namespace lumatile {

std::string displayToken(std::string_view display) {
    constexpr std::array<char, 16> digits{'0', '1', '2', '3', '4', '5', '6', '7',
                                          '8', '9', 'a', 'b', 'c', 'd', 'e', 'f'};
    const std::size_t colon = display.rfind(':');
    const std::size_t dot = display.rfind('.');
    if (colon != std::string_view::npos && dot != std::string_view::npos && dot > colon) {
        display = display.substr(0, dot);
    }
    std::string token = "display";
    for (const char character : display) {
        const bool isPlain = (character >= '0' && character <= '9') ||
                             (character >= 'a' && character <= 'z') ||
                             (character >= 'A' && character <= 'Z');
        if (isPlain) {
            token += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            token += '_';
            token += digits.at(byte / digits.size());
            token += digits.at(byte % digits.size());
        }
    }
    return token;
}

}  // namespace lumatile
