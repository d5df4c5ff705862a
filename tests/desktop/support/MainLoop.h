#pragma once

#include <functional>

namespace lumatile::desktop {

/// Runs the main loop of GLib until `holds`, or until the usual deadline.
/// @return whether it holds
bool runUntil(const std::function<bool()>& holds);

/// Handles everything that is ready, without waiting.
void runReady();

}  // namespace lumatile::desktop
