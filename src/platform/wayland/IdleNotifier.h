#pragma once

#include "platform/wayland/WaylandConnection.h"

namespace lumatile {

/// What the compositor tells of pauses with: the common interface, or Plasma's older one.
struct IdleNotifier {
    WaylandHandle<ext_idle_notifier_v1> common;
    WaylandHandle<org_kde_kwin_idle> older;

    /// The one that this compositor has; the common one where it has both.
    static IdleNotifier of(WaylandConnection& connection);

    /// Whether the compositor tells of pauses.
    bool isAvailable() const { return common || older; }
};

}  // namespace lumatile
