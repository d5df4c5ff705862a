#include "tests/desktop/support/WindowPlacing.h"

#include <string>
#include <string_view>
#include <vector>

#include "tests/desktop/support/DesktopError.h"
#include "tests/desktop/support/OuterFrame.h"

namespace lumatile::desktop {
namespace {

// North-west gravity stated, so that the corner of the whole frame is meant; all four values given;
// asked by a pager, whom window managers obey.
constexpr std::uint32_t placingFlags = 1U | (15U << 8U) | (2U << 12U);

// Left, right, top, bottom; zeros where the window has none.
std::vector<std::uint32_t> extents(XClient& client, xcb_window_t window,
                                   std::string_view property) {
    std::vector<std::uint32_t> items = client.cardinals(window, property);
    items.resize(4);
    return items;
}

std::uint32_t item(int number) { return static_cast<std::uint32_t>(number); }

}  // namespace

void placeWindow(XClient& client, xcb_window_t window, const PixelRect& wanted) {
    placeWindow(client, window, wanted, [&](const PixelRect& frame) { return frame == wanted; });
}

void placeWindow(XClient& client, xcb_window_t window, const PixelRect& wanted,
                 const std::function<bool(const PixelRect&)>& accepts) {
    const Deadline deadline = Deadline::usual();
    const auto now = [&] { return outerFrame(client, window).value_or(PixelRect{}); };
    const auto arrived = [&] { return accepts(now()); };
    while (!deadline.isOver()) {
        const std::vector<std::uint32_t> frame = extents(client, window, "_NET_FRAME_EXTENTS");
        // The corner of a window that draws its own frame is the client's, shadow included.
        const std::vector<std::uint32_t> own = extents(client, window, "_GTK_FRAME_EXTENTS");
        client.ask(window, "_NET_MOVERESIZE_WINDOW",
                   {placingFlags, item(wanted.x) - own[0], item(wanted.y) - own[2],
                    item(wanted.width) - frame[0] - frame[1] + own[0] + own[1],
                    item(wanted.height) - frame[2] - frame[3] + own[2] + own[3]});
        bool frameChanged = false;
        XClient::waitUntil(
            [&] {
                // A window manager that has just started gives it another frame on the way.
                frameChanged = extents(client, window, "_NET_FRAME_EXTENTS") != frame;
                return arrived() || frameChanged;
            },
            deadline);
        if (!frameChanged && arrived()) {
            return;
        }
    }
    std::string states;
    for (const std::uint32_t state : client.cardinals(window, "_NET_WM_STATE")) {
        states += " " + client.atomName(state);
    }
    throw DesktopError("the window is at " + toString(now()) + " instead of " + toString(wanted) +
                       states);
}

}  // namespace lumatile::desktop
