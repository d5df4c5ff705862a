#include "platform/x11/X11EdgeTile.h"

#include <xcb/xinput.h>

#include <string_view>
#include <utility>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11RootMessage.h"
#include "platform/x11/X11WindowManagerName.h"

namespace lumatile {

namespace {

// By which it calls itself on its check window.
constexpr std::string_view undoableName = "KWin";

constexpr std::uint32_t stateRemove = 0;
constexpr std::uint32_t stateAdd = 1;
constexpr std::uint32_t pagerSource = 2;

}  // namespace

X11EdgeTile::X11EdgeTile(X11Connection& connection, X11WindowMirror& mirror)
    : connection_(connection),
      mirror_(mirror),
      self_(std::make_shared<X11EdgeTile*>(this)),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
    const xcb_query_extension_reply_t* input =
        xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (input != nullptr && input->present != 0) {
        inputExtension_ = input->major_opcode;
    }
}

X11EdgeTile::~X11EdgeTile() { *self_ = nullptr; }

bool X11EdgeTile::takeDrop() { return std::exchange(isReleased_, false) && isUndoable(); }

std::optional<X11PixelRect> X11EdgeTile::outerAtRelease(const X11Window& window) {
    const bool isKnown = isReleased_ && released_ && released_->id == window.id &&
                         released_->serial == window.serial;
    return isKnown && isUndoable() ? std::optional(released_->outer) : std::nullopt;
}

void X11EdgeTile::undo(xcb_window_t window) {
    const xcb_atom_t state = connection_.atoms()["_NET_WM_STATE"];
    const xcb_atom_t vertically = connection_.atoms()["_NET_WM_STATE_MAXIMIZED_VERT"];
    const xcb_atom_t horizontally = connection_.atoms()["_NET_WM_STATE_MAXIMIZED_HORZ"];
    for (const std::uint32_t action : {stateAdd, stateRemove}) {
        sendRootMessage(connection_, window, state,
                        {action, vertically, horizontally, pagerSource, 0});
    }
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
    // made of the drag, and what it makes of the release comes later.
    const X11Window* const front = mirror_.active();
    released_ = front != nullptr && !front->isStale()
                    ? std::optional(Released{front->id, front->serial, front->frame().outer()})
                    : std::nullopt;
    // Whoever acts on the release may have seen it later than this and so acts later: the end of
    // the turn is behind both.
    connection_.defer([self = self_] {
        if (*self != nullptr) {
            (*self)->connection_.defer([self] {
                if (*self != nullptr) {
                    (*self)->isReleased_ = false;
                }
            });
        }
    });
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
