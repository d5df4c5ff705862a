#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tests/desktop/support/Deadline.h"

namespace lumatile::desktop {

struct XReplyDeleter {
    void operator()(void* reply) const { std::free(reply); }  // NOLINT(*-no-malloc)
};

/// Owns a reply, an event or an error of the server.
template <typename Reply>
using XReply = std::unique_ptr<Reply, XReplyDeleter>;

/// A connection of the test's own to a private server, independent of the program's.
class XClient {
public:
    /// @throws DesktopError when there is no such server
    explicit XClient(const std::string& display);
    XClient(const XClient&) = delete;
    XClient& operator=(const XClient&) = delete;
    virtual ~XClient();

    xcb_connection_t* connection() const { return connection_; }
    const xcb_screen_t& screen() const { return *screen_; }
    xcb_window_t root() const { return screen_->root; }
    bool isLost() const { return xcb_connection_has_error(connection_) != 0; }

    xcb_atom_t atom(std::string_view name);
    std::string atomName(xcb_atom_t atom);

    /// The 32-bit items of a property; empty when the window or the property does not exist.
    std::vector<std::uint32_t> cardinals(xcb_window_t window, std::string_view property);
    /// The first item, or 0.
    std::uint32_t cardinal(xcb_window_t window, std::string_view property);
    void setCardinals(xcb_window_t window, std::string_view property, xcb_atom_t type,
                      const std::vector<std::uint32_t>& items);
    void setText(xcb_window_t window, std::string_view property, xcb_atom_t type,
                 std::string_view text);

    bool exists(xcb_window_t window);

    /// An id for a new window that no other window of this process has had. The server gives the
    /// ids of a client that is gone to the next one; a window manager that is behind would take
    /// what it is yet to be told of the old window for news of the new one, and may end it with the
    /// frame that it gave it.
    xcb_window_t newWindowId();

    /// Sends a client message to the root, as programs ask the window manager for things.
    void ask(xcb_window_t window, std::string_view type, const std::vector<std::uint32_t>& data);

    /// Returns when the server has carried out everything asked on this connection before, and
    /// handles the events that came until then.
    void roundTrip();

    /// Waits until `condition` holds. Meanwhile the events of every client in this process are
    /// handled, and the condition is looked at after each batch of them.
    /// @param alsoWatch further descriptors whose readability is worth another look
    /// @return false when it does not hold at the deadline
    static bool waitUntil(const std::function<bool()>& condition,
                          Deadline deadline = Deadline::usual(),
                          const std::vector<int>& alsoWatch = {});

protected:
    virtual void handle(const xcb_generic_event_t& event);

private:
    bool handleArrived();
    static bool handleAllArrived();

    xcb_connection_t* connection_;
    xcb_screen_t* screen_ = nullptr;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
    std::map<xcb_atom_t, std::string> atomNames_;
};

}  // namespace lumatile::desktop
