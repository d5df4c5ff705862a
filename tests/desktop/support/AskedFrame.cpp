#include "tests/desktop/support/AskedFrame.h"

namespace lumatile::desktop {
namespace {

std::vector<int> extents(DesktopObserver& observer, xcb_window_t window,
                         const std::string& property) {
    const std::vector<std::uint32_t> items = observer.cardinals(window, property);
    std::vector<int> result(items.begin(), items.end());
    result.resize(4);
    return result;
}

}  // namespace

std::optional<PixelRect> askedFrame(DesktopObserver& observer, xcb_window_t window,
                                    const PixelRect& now) {
    const auto messages = observer.messages(window, "_NET_MOVERESIZE_WINDOW");
    if (messages.empty()) {
        return std::nullopt;
    }
    const std::vector<int> frame = extents(observer, window, "_NET_FRAME_EXTENTS");
    const std::vector<int> shadow = extents(observer, window, "_GTK_FRAME_EXTENTS");
    PixelRect asked = now;
    for (const RootMessage& message : messages) {
        // Bits 8 to 11 say which of x, y, width and height are given.
        const auto named = [&](unsigned field) {
            return (message.data[0] & (1U << (8 + field))) != 0;
        };
        const auto value = [&](std::size_t field) {
            return static_cast<int>(message.data[field + 1]);
        };
        if (named(0)) {
            asked.x = value(0) + shadow[0];
        }
        if (named(1)) {
            asked.y = value(1) + shadow[2];
        }
        if (named(2)) {
            asked.width = value(2) + frame[0] + frame[1] - shadow[0] - shadow[1];
        }
        if (named(3)) {
            asked.height = value(3) + frame[2] + frame[3] - shadow[2] - shadow[3];
        }
    }
    return asked;
}

}  // namespace lumatile::desktop
