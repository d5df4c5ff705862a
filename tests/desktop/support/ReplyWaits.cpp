#include "tests/desktop/support/ReplyWaits.h"

#include <dlfcn.h>

#include <bit>
#include <cstdint>

namespace lumatile::desktop {

namespace {

ReplyWaits* counting = nullptr;

}  // namespace

ReplyWaits::ReplyWaits(xcb_connection_t* connection)
    : connection_(connection), lastOnItsWay_(xcb_no_operation(connection).sequence) {
    counting = this;
}

ReplyWaits::~ReplyWaits() { counting = nullptr; }

void ReplyWaits::noteWait(xcb_connection_t* connection, unsigned int request) {
    if (counting == nullptr || counting->connection_ != connection) {
        return;
    }
    ++counting->replies_;
    // Sequence numbers wrap round, so their difference tells which came first.
    if (std::bit_cast<std::int32_t>(request - counting->lastOnItsWay_) > 0) {
        ++counting->roundTrips_;
        counting->lastOnItsWay_ = xcb_no_operation(connection).sequence;
    }
}

}  // namespace lumatile::desktop

// The library calls this function of its own by name, so that a program which has one of the same
// name gets to see every wait.
extern "C" void* xcb_wait_for_reply(xcb_connection_t* connection, unsigned int request,
                                    xcb_generic_error_t** error) {
    using Wait = void* (*)(xcb_connection_t*, unsigned int, xcb_generic_error_t**);
    static const Wait original = std::bit_cast<Wait>(dlsym(RTLD_NEXT, "xcb_wait_for_reply"));
    lumatile::desktop::ReplyWaits::noteWait(connection, request);
    return original(connection, request, error);
}
