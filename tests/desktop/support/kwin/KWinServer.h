#pragma once

#include <sys/types.h>

#include <string>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {

/// A KWin of our own as the Wayland compositor of a private session, with outputs that exist in
/// memory alone and an X server beside it. Several run side by side.
class KWinServer {
public:
    struct Options {
        int outputs = 1;
        int width = 1920;  ///< Of every output, pixels.
        int height = 1080;
        bool pictures = false;  ///< Whether pictures of the screens can be taken, which costs more.
    };

    /// Returns when it answers on the bus, on its socket and as an X server. The session's
    /// programs find it from then on.
    /// @throws DesktopError when it does not come up
    KWinServer(PrivateSession& session, const Options& options);
    explicit KWinServer(PrivateSession& session);
    KWinServer(const KWinServer&) = delete;
    KWinServer& operator=(const KWinServer&) = delete;

    /// Ends it as a crash does: asked politely it may wait for its X server for 5 s.
    ~KWinServer() { crash(); }

    pid_t pid() const { return process_.pid(); }
    bool isRunning() { return process_.isRunning(); }

    /// Of the X server beside it, as in $DISPLAY.
    const std::string& display() const { return display_; }
    /// The path of its Wayland socket.
    std::string socket() const;

    void stop() { process_.stop(); }

    /// Ends it at once, as a crash does.
    void crash();

    /// Starts it anew on the same bus and socket once it has ended.
    void start();

private:
    PrivateSession* session_;
    Options options_;
    ChildProcess process_;
    std::string display_;
};

}  // namespace lumatile::desktop
