#pragma once

#include <string>
#include <vector>

#include "tests/desktop/support/ChildProcess.h"
#include "tests/desktop/support/PrivateSession.h"
#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// A compositor beside a window manager that has none of its own. It paints its own background, so
/// only what is over a window has the colour that it should have.
class Compositor {
public:
    /// Returns when it owns the selection by which programs know of it.
    /// @param further options of its own: "--shadow" …
    /// @throws DesktopError when it does not come up
    explicit Compositor(PrivateSession& session, const std::vector<std::string>& further = {});

    /// Whether any program composites the display's windows, and says so.
    static bool runsOn(XClient& client);

    /// Ends it; the windows are solid again.
    void stop();

    /// Ends it at once, as a crash does.
    void crash();

private:
    ChildProcess process_;
};

}  // namespace lumatile::desktop
