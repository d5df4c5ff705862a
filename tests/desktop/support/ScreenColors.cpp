#include "tests/desktop/support/ScreenColors.h"

#include <cmath>
#include <cstdlib>
#include <ostream>

#include "tests/desktop/support/DesktopError.h"

namespace lumatile::desktop {

ScreenColor ScreenColor::of(std::uint32_t rgb) {
    constexpr std::uint32_t channel = 0xff;
    return {static_cast<int>(rgb >> 16U & channel), static_cast<int>(rgb >> 8U & channel),
            static_cast<int>(rgb & channel)};
}

ScreenColor ScreenColor::behindBlack(double opacity) const {
    const auto scaled = [&](int value) {
        return static_cast<int>(std::lround(value * (1 - opacity)));
    };
    return {scaled(red), scaled(green), scaled(blue)};
}

bool ScreenColor::isNear(const ScreenColor& other, int tolerance) const {
    return std::abs(red - other.red) <= tolerance && std::abs(green - other.green) <= tolerance &&
           std::abs(blue - other.blue) <= tolerance;
}

std::ostream& operator<<(std::ostream& stream, const ScreenColor& color) {
    return stream << "rgb(" << color.red << ", " << color.green << ", " << color.blue << ")";
}

ScreenColor ScreenColors::at(int x, int y) {
    const XReply<xcb_get_image_reply_t> image(xcb_get_image_reply(
        connection(),
        xcb_get_image(connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, root(), static_cast<std::int16_t>(x),
                      static_cast<std::int16_t>(y), 1, 1, ~std::uint32_t{0}),
        nullptr));
    if (!image || xcb_get_image_data_length(image.get()) < 4) {
        throw DesktopError("the screen cannot be read");
    }
    // The private servers' only form: 32 bits a pixel, blue first.
    const std::uint8_t* bytes = xcb_get_image_data(image.get());
    return {bytes[2], bytes[1], bytes[0]};
}

}  // namespace lumatile::desktop
