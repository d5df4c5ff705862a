#pragma once

#include <array>
#include <string>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {

/// A window manager that runs in a private session.
class WindowManager {
public:
    enum class Kind { openbox, xfwm4, kwin, metacity };
    static constexpr std::array kinds{Kind::openbox, Kind::xfwm4, Kind::kwin, Kind::metacity};

    struct Options {
        bool ownBindings = false;     ///< Its default key bindings; otherwise they are cleared.
        bool compositing = false;     ///< Where it has a compositor of its own (all but openbox).
        bool edgeTiling = true;       ///< Metacity's own tiling of windows dropped at an edge.
        bool electricBorders = true;  ///< Kwin's.
        /// Alt and the first button move a window under all of them; otherwise whatever their
        /// defaults hold the key for.
        bool movesWithAlt = false;
    };

    /// Returns when it manages windows.
    /// @throws DesktopError when it does not come up
    WindowManager(PrivateSession& session, Kind kind, Options options);
    WindowManager(PrivateSession& session, Kind kind);

    Kind kind() const { return kind_; }
    bool isRunning() { return process_.isRunning(); }
    pid_t pid() const { return process_.pid(); }

    /// Ends it; the windows stay.
    void stop();

    /// Ends it at once, as a crash does.
    void crash();

private:
    void waitUntilReady(PrivateSession& session, const Options& options);

    PrivateSession* session_;
    Kind kind_;
    ChildProcess process_;
};

/// "openbox", "xfwm4", "kwin", "metacity"
std::string toString(WindowManager::Kind kind);

}  // namespace lumatile::desktop
