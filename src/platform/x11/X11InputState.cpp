#include "platform/x11/X11InputState.h"

#include <xcb/screensaver.h>

#include "platform/x11/X11Reply.h"
#include "platform/x11/X11Texts.h"

namespace lumatile {

namespace {

constexpr double millisecondsPerSecond = 1000;

// Wheels are buttons too, from 4 on; those move no windows.
constexpr std::uint16_t dragButtons = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;

/// To be asked before every use: a request of an extension that the server does not have would
/// close the connection.
bool hasScreenSaver(const X11Connection& connection) {
    const xcb_query_extension_reply_t* extension =
        xcb_get_extension_data(connection.get(), &xcb_screensaver_id);
    return extension != nullptr && extension->present != 0;
}

}  // namespace

X11InputState::X11InputState(X11Connection& connection, SystemLog& log)
    : connection_(connection), tellsIdleTime_(hasScreenSaver(connection)) {
    if (!tellsIdleTime_) {
        log.write(X11Texts::inputState, X11Texts::noIdleTime);
    }
}

std::optional<double> X11InputState::idleSeconds() {
    if (!tellsIdleTime_) {
        return std::nullopt;
    }
    const X11Reply<xcb_screensaver_query_info_reply_t> info(xcb_screensaver_query_info_reply(
        connection_.get(), xcb_screensaver_query_info(connection_.get(), connection_.root()),
        nullptr));
    if (!info) {
        return std::nullopt;
    }
    return info->ms_since_user_input / millisecondsPerSecond;
}

bool X11InputState::isDragButtonDown() {
    const X11Reply<xcb_query_pointer_reply_t> pointer(xcb_query_pointer_reply(
        connection_.get(), xcb_query_pointer(connection_.get(), connection_.root()), nullptr));
    return pointer && (pointer->mask & dragButtons) != 0;
}

}  // namespace lumatile
