#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include <xcb/res.h>
#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "windows/AccessibilityPlatform.h"

namespace lumatile {

/// The process ids of the server's clients by the server's own word, which a sandboxed program
/// cannot get wrong and an old one cannot leave out.
class X11ProcessIds {
public:
    /// An unanswered request.
    struct Question {
        std::optional<xcb_res_query_client_ids_cookie_t> cookie;
    };

    /// @param connection outlives this
    explicit X11ProcessIds(X11Connection& connection);

    /// The part of a window's id that is the same for all windows of one client.
    xcb_window_t clientOf(xcb_window_t window) const { return window & ~resourceMask_; }

    /// Asks about the clients of these windows in one request.
    Question ask(const std::vector<xcb_window_t>& windows) const;

    /// Waits for the answer: the process of each client, where the server knows it.
    std::unordered_map<xcb_window_t, Pid> answer(const Question& question) const;

private:
    X11Connection& connection_;
    std::uint32_t resourceMask_;
    bool isAvailable_;
};

}  // namespace lumatile
