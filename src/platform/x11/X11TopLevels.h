#pragma once

#include <cstddef>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

namespace lumatile {

/// One search for the children of the root that hold some windows: the frames that window managers
/// nest their clients in. The questions go out when it is made, so that others can share their
/// round trip.
class X11TopLevels {
public:
    /// @param rootChildren as they are now
    X11TopLevels(xcb_connection_t* connection, const std::vector<xcb_window_t>& clients,
                 const std::vector<xcb_window_t>& rootChildren);
    X11TopLevels(const X11TopLevels&) = delete;
    X11TopLevels& operator=(const X11TopLevels&) = delete;
    ~X11TopLevels() = default;

    struct Found {
        xcb_window_t client = XCB_WINDOW_NONE;
        xcb_window_t parent = XCB_WINDOW_NONE;    ///< None when the client is gone.
        xcb_window_t topLevel = XCB_WINDOW_NONE;  ///< None when it was taken out of its frame
                                                  ///< meanwhile; perhaps the client itself.
    };

    bool isEmpty() const { return clients_.empty(); }

    /// Waits for the answers, and asks on where a client is nested deeper than one window.
    std::vector<Found> take();

    static std::vector<xcb_window_t> childrenOf(const xcb_query_tree_reply_t& tree);

private:
    struct Question {
        xcb_window_t window;
        xcb_query_tree_cookie_t cookie;
    };

    /// A client whose top level is not known yet, by its place in `found_`, and the ancestor that
    /// has been reached.
    struct Climb {
        std::size_t found;
        xcb_window_t ancestor;
    };

    void takeFrames();
    void takeClients();
    void climb();

    xcb_connection_t* connection_;
    std::vector<Question> clients_;
    std::vector<Question> frames_;
    std::unordered_set<xcb_window_t> topLevels_;
    std::unordered_map<xcb_window_t, xcb_window_t> parents_;  // Child to parent.
    std::vector<Climb> climbing_;
    std::vector<Found> found_;
};

}  // namespace lumatile
