#pragma once

#include <cstddef>

#include <xcb/xcb.h>

namespace lumatile::desktop {

/// Counts the round trips of a connection while it lives, whoever makes them: the protocol
/// library's own wait for replies is looked at from outside. Waiting for a reply is a round trip of
/// its own unless its request was sent before an earlier wait began, which then both share.
class ReplyWaits {
public:
    explicit ReplyWaits(xcb_connection_t* connection);
    ReplyWaits(const ReplyWaits&) = delete;
    ReplyWaits& operator=(const ReplyWaits&) = delete;
    ~ReplyWaits();

    std::size_t roundTrips() const { return roundTrips_; }
    std::size_t replies() const { return replies_; }

    /// Called by the wait that stands in for the library's.
    static void noteWait(xcb_connection_t* connection, unsigned int request);

private:
    xcb_connection_t* connection_;
    unsigned int lastOnItsWay_;  // The newest request that was sent when the last wait began.
    std::size_t roundTrips_ = 0;
    std::size_t replies_ = 0;
};

}  // namespace lumatile::desktop
