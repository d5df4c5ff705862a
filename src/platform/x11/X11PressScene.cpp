#include "platform/x11/X11PressScene.h"

#include <utility>

#include <xcb/xinput.h>

#include "platform/x11/X11Event.h"

namespace lumatile {

X11PressScene::X11PressScene(X11Connection& connection, X11WindowTable& table,
                             std::function<void()> released)
    : connection_(connection),
      table_(table),
      released_(std::move(released)),
      subscription_(connection.observe([this](const xcb_generic_event_t& event) { note(event); })) {
    const xcb_query_extension_reply_t* input =
        xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (input != nullptr && input->present != 0) {
        inputExtension_ = input->major_opcode;
    }
}

std::optional<X11PixelRect> X11PressScene::outerBeforeMove(const X11Window& window) const {
    const auto seen = windows_.find(window.id);
    return seen != windows_.end() && seen->second.serial == window.serial &&
                   seen->second.outer != window.frame().outer()
               ? std::optional(seen->second.outer)
               : std::nullopt;
}

void X11PressScene::note(const xcb_generic_event_t& event) {
    if (X11Event::type(event) != XCB_GE_GENERIC) {
        return;
    }
    const auto& generic = X11Event::as<xcb_ge_generic_event_t>(event);
    if (inputExtension_ == 0 || generic.extension != inputExtension_) {
        return;
    }
    if (generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
        notePress();
    } else if (generic.event_type == XCB_INPUT_RAW_BUTTON_RELEASE) {
        connection_.defer(lifeline_.guard([this] { released_(); }));
    }
}

void X11PressScene::notePress() {
    isPressed_ = true;
    windows_.clear();
    for (const xcb_window_t id : table_.stacking()) {
        const X11Window* window = table_.find(id);
        if (window == nullptr || window->isUnheard ||
            (window->isPlaceStale && !window->toldPlace)) {
            continue;
        }
        windows_[id] = {window->serial, window->lastHeardFrame().outer()};
    }
    // Whoever acts on the press may have seen it later than this and so acts later: the end of the
    // turn is behind both.
    connection_.defer(lifeline_.guard([this, press = ++presses_] {
        connection_.defer(lifeline_.guard([this, press] {
            if (press == presses_) {
                isPressed_ = false;
                windows_.clear();
            }
        }));
    }));
}

}  // namespace lumatile
