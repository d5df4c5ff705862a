#include "platform/x11/X11WindowFrame.h"

#include <algorithm>

namespace lumatile {

X11PixelRect X11WindowFrame::outer() const {
    const int left = decoration.left - shadow.left;
    const int top = decoration.top - shadow.top;
    return {client.x - left, client.y - top,
            std::max(1, client.width + left + decoration.right - shadow.right),
            std::max(1, client.height + top + decoration.bottom - shadow.bottom)};
}

X11PixelRect X11WindowFrame::clientFor(const X11PixelRect& outer) const {
    const int left = decoration.left - shadow.left;
    const int top = decoration.top - shadow.top;
    return {outer.x + left, outer.y + top,
            std::max(1, outer.width - left - decoration.right + shadow.right),
            std::max(1, outer.height - top - decoration.bottom + shadow.bottom)};
}

X11PixelRect X11WindowFrame::constrained(const X11PixelRect& outer,
                                         const X11SizeHints& hints) const {
    X11WindowFrame result = *this;
    result.client = hints.constrained(clientFor(outer));
    return result.outer();
}

X11PixelRect X11WindowFrame::placing(const X11PixelRect& target) const {
    return {target.x - decoration.left, target.y - decoration.top, target.width, target.height};
}

}  // namespace lumatile
