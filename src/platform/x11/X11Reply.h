#pragma once

#include <cstdlib>
#include <memory>

namespace lumatile {

struct X11ReplyDeleter {
    // The protocol library hands out replies and events from malloc.
    void operator()(void* reply) const { std::free(reply); }  // NOLINT(*-no-malloc)
};

/// Owns a reply or an event of the server; empty when the request failed.
template <typename Reply>
using X11Reply = std::unique_ptr<Reply, X11ReplyDeleter>;

}  // namespace lumatile
