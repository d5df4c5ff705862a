#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include <xcb/xcb.h>

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11GammaRamp.h"
#include "platform/x11/X11RandR.h"

namespace lumatile {

/// Darkens the screens by their gamma ramps, which needs no compositor, and restores them.
///
/// The server keeps a ramp when the program that set it dies. So before the first change the ramps
/// are laid down in a property of the root window, which lives exactly as long as they do, and
/// whoever starts next restores them from there. A ramp that somebody else has set meanwhile (a
/// night light) is the one to restore from then on; it is never replaced by an older one.
class X11GammaRamps {
public:
    /// Restores what a predecessor left dimmed.
    /// @param connection outlives the ramps
    explicit X11GammaRamps(X11Connection& connection);
    X11GammaRamps(const X11GammaRamps&) = delete;
    X11GammaRamps& operator=(const X11GammaRamps&) = delete;
    ~X11GammaRamps() { restore(); }

    /// Puts black of this opacity before every screen that is on, screens that were plugged in
    /// since the last call included.
    /// @param opacity above 0, at most 1
    /// @return false when no screen's ramp can be set
    bool dim(double opacity);

    /// Gives every dimmed screen the ramp that it had, also one that has been switched off since.
    /// Asks the server nothing when none is dimmed.
    void restore();

private:
    using Controller = std::uint32_t;

    struct Dimmed {
        X11GammaRamp original;
        X11GammaRamp set;  ///< What the server made of what it was given last.
    };

    std::map<Controller, X11GammaRamp> activeRamps();
    void readControllers();
    std::map<Controller, X11GammaRamp> ramps(const std::vector<Controller>& controllers);
    void set(Controller controller, const X11GammaRamp& ramp);
    bool keepOriginals();
    void restoreKept();

    X11Connection& connection_;
    X11RandR randr_;
    xcb_atom_t property_;
    std::map<Controller, Dimmed> dimmed_;
    std::vector<Controller> active_;            // As of the last look.
    bool areControllersStale_ = true;           // Whether the screens have changed since.
    X11Connection::Subscription subscription_;  // Last: its observer names the fields above.
};

}  // namespace lumatile
