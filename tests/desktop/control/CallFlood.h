#pragma once

#include <gio/gio.h>

#include <string>

#include "platform/freedesktop/glib/GLibHandles.h"

namespace lumatile::desktop {

/// Another program on the session bus that asks for thousands of things at once. Its answers come
/// in while it is told to listen.
class CallFlood {
public:
    /// @param address of the bus
    /// @param name of the one who is asked
    CallFlood(const std::string& address, std::string name);

    /// Sends so many requests without waiting, which switch the edge jitter off and on in turn. The
    /// last of an even number switches it on.
    void switchEdgeJitter(int times);

    /// Takes the answers that are there.
    void listen();

    /// Takes answers until one has come, at least.
    void awaitAnswer();

    int answered() const { return answered_; }
    int refused() const { return refused_; }

private:
    GObjectHandle<GDBusConnection> connection_;
    std::string name_;
    int answered_ = 0;
    int refused_ = 0;
};

}  // namespace lumatile::desktop
