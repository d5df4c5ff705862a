#include "platform/x11/X11EdgeTile.h"

#include <xcb/xinput.h>

#include <string_view>
#include <utility>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11WindowManagerName.h"

namespace lumatile {

namespace {

// By which it calls itself on its check window.
constexpr std::string_view undoableName = "KWin";

}  // namespace

X11EdgeTile::X11EdgeTile(X11Connection& connection, X11WindowMirror& mirror)
    : connection_(connection),
      mirror_(mirror),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
    const xcb_query_extension_reply_t* input =
        xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (input != nullptr && input->present != 0) {
        inputExtension_ = input->major_opcode;
    }
}

bool X11EdgeTile::takeDrop() { return std::exchange(isReleased_, false) && isUndoable(); }

std::optional<X11PixelRect> X11EdgeTile::outerAtRelease(const X11Window& window) {
    const auto found = isReleased_ ? atRelease_.find(window.id) : atRelease_.end();
    if (found == atRelease_.end() || found->second.serial != window.serial || !isUndoable()) {
        return std::nullopt;
    }
    const X11PixelRect& before = found->second.outer;
    if (found->second.isFresh) {
        return before;
    }
    const X11PixelRect now = window.frame().outer();
    return isTiled(before, now)
               ? std::optional(X11PixelRect{now.x, now.y, before.width, before.height})
               : std::nullopt;
}

bool X11EdgeTile::isTiled(const X11PixelRect& before, const X11PixelRect& now) {
    const bool inWidth = now.width != before.width && now.x != before.x &&
                         now.x + now.width != before.x + before.width;
    const bool inHeight = now.height != before.height && now.y != before.y &&
                          now.y + now.height != before.y + before.height;
    return inWidth || inHeight;
}

void X11EdgeTile::note(const xcb_generic_event_t& event) {
    if (X11Event::type(event) != XCB_GE_GENERIC) {
        return;
    }
    const auto& generic = X11Event::as<xcb_ge_generic_event_t>(event);
    if (inputExtension_ != 0 && generic.extension == inputExtension_ &&
        generic.event_type == XCB_INPUT_RAW_BUTTON_RELEASE) {
        noteRelease();
    }
}

void X11EdgeTile::noteRelease() {
    isReleased_ = true;
    // The server tells of things in their order: what the mirror knows now, the window manager had
    // made of the drag, and what it makes of the release comes later. Which window was dragged is
    // not known here: the one in front may have come there by the press, and be read only later.
    atRelease_.clear();
    for (const xcb_window_t id : mirror_.stacking()) {
        if (const X11Window* window = mirror_.find(id)) {
            atRelease_[id] = {window->serial, window->lastHeardFrame().outer(),
                              !window->isStale() && !window->isUnheard};
        }
    }
    // Whoever acts on the release may put that off, as when the press before it was heard of late.
    connection_.deferToEnd(lifeline_.guard([this] { isReleased_ = false; }));
}

bool X11EdgeTile::isUndoable() {
    const xcb_window_t manager = mirror_.windowManager();
    if (manager != known_) {
        known_ = manager;
        isKnownUndoable_ = windowManagerName(connection_, manager) == undoableName;
    }
    return isKnownUndoable_;
}

}  // namespace lumatile
