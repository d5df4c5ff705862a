#include "platform/x11/X11RandR.h"

#include <xcb/randr.h>

#include "platform/x11/X11Event.h"
#include "platform/x11/X11Reply.h"

namespace lumatile {

namespace {

constexpr int perMajor = 100;

}  // namespace

X11RandR::X11RandR(X11Connection& connection) {
    xcb_connection_t* const server = connection.get();
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(server, &xcb_randr_id);
    if (extension == nullptr || extension->present == 0) {
        return;
    }
    const X11Reply<xcb_randr_query_version_reply_t> version(
        xcb_randr_query_version_reply(server, xcb_randr_query_version(server, 1, 5), nullptr));
    if (!version || version->major_version < 1) {
        return;
    }
    version_ = static_cast<int>(version->major_version) * perMajor +
               static_cast<int>(version->minor_version);
    firstEvent_ = extension->first_event;
    xcb_randr_select_input(server, connection.root(),
                           XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                               XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
}

bool X11RandR::isChange(const xcb_generic_event_t& event) const {
    const int type = X11Event::type(event);
    return version_ > 0 && (type == firstEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                            type == firstEvent_ + XCB_RANDR_NOTIFY);
}

}  // namespace lumatile
