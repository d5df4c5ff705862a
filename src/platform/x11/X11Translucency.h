#pragma once

#include "platform/x11/X11Connection.h"
#include "ports/Translucency.h"

namespace lumatile {

/// Windows can be translucent while a compositor runs: it owns a selection of the screen's.
class X11Translucency final : public Translucency {
public:
    /// @param connection outlives this
    explicit X11Translucency(X11Connection& connection);

    /// One round trip.
    bool isAvailable() override;

private:
    X11Connection& connection_;
    xcb_atom_t selection_;
};

}  // namespace lumatile
