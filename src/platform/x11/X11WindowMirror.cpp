#include "platform/x11/X11WindowMirror.h"

#include <optional>

#include "platform/x11/X11Reply.h"
#include "platform/x11/X11WindowReading.h"

namespace lumatile {

namespace {

// While one reading is under way more may change. What is still stale after so many rounds stays
// so until the next reading, so that a desktop in turmoil cannot hold a reader up.
constexpr int mostRounds = 4;

}  // namespace

X11WindowMirror::X11WindowMirror(X11Connection& connection)
    : connection_(connection),
      properties_(connection.atoms()),
      processIds_(connection),
      root_(connection),
      listening_(connection, table_),
      // What was not listened to during a drag is known again after it.
      press_(connection, table_,
             [this] {
                 if (listening_.isAnyUnheard()) {
                     refresh();
                 }
             }),
      events_(connection, properties_, table_, root_, listening_) {}

void X11WindowMirror::refresh() {
    connection_.readEvents();
    listening_.noteReading();
    for (int round = 0; round < mostRounds && isStale() && !connection_.isLost(); ++round) {
        X11WindowReading({connection_, properties_, processIds_, table_, root_, listening_}).run();
        connection_.readEvents();
    }
}

X11Window* X11WindowMirror::findManaged(xcb_window_t id, std::uint64_t serial) {
    X11Window* window = find(id);
    return window != nullptr && window->isManaged && window->serial == serial ? window : nullptr;
}

X11Window* X11WindowMirror::active() {
    X11Window* window = find(root_.active());
    return window != nullptr && window->isManaged ? window : nullptr;
}

X11Window* X11WindowMirror::movedSincePressAt(int x, int y) {
    std::optional<X11PixelRect> pointer;
    for (const xcb_window_t id : stacking()) {
        X11Window* window = find(id);
        if (window == nullptr || isMinimized(*window) || isElsewhere(*window)) {
            continue;
        }
        const X11PixelRect outer = window->frame().outer();
        if (press_.isUnknown(*window)) {
            // One that is dragged goes with the pointer.
            pointer = pointer ? pointer : askPointer();
            if ((pointer->x != x || pointer->y != y) && outer.contains(pointer->x, pointer->y)) {
                return window;
            }
        }
        const std::optional<X11PixelRect> before = outerAtPress(*window);
        if (before.value_or(outer).contains(x, y)) {
            return before ? window : nullptr;
        }
    }
    return nullptr;
}

X11PixelRect X11WindowMirror::askPointer() {
    const X11Reply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        connection_.get(), xcb_query_pointer(connection_.get(), connection_.root()), nullptr));
    return reply ? X11PixelRect{reply->root_x, reply->root_y, 1, 1} : X11PixelRect{};
}

bool X11WindowMirror::isMinimized(const X11Window& window) const {
    const X11WindowFacts& facts = window.facts;
    if (facts.isHidden) {
        return true;
    }
    // Some window managers call everything iconic that they have not mapped.
    return facts.isIconic && !facts.isShaded && !isShowingDesktop() && !isElsewhere(window);
}

bool X11WindowMirror::isElsewhere(const X11Window& window) const {
    const std::optional<std::uint32_t>& desktop = window.facts.desktop;
    const std::optional<std::uint32_t>& shown = root_.currentDesktop();
    return desktop && shown && desktop != X11WindowFacts::everyDesktop && desktop != shown;
}

}  // namespace lumatile
