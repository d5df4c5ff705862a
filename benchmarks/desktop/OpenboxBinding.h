#pragma once

#include <string>

#include "tests/desktop/support/DesktopObserver.h"
#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::benchmark {

/// Gives the running openbox a key binding of its own that lays the active window on the left half
/// of its monitor, as its users write it. openbox takes it up a moment later.
/// @param keys in openbox's notation: "C-A-z"
/// @throws DesktopError when its settings have no place for it
void bindLeftHalf(const desktop::PrivateSession& session, desktop::DesktopObserver& observer,
                  const std::string& keys);

}  // namespace lumatile::benchmark
