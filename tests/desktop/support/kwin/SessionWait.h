#pragma once

#include <functional>

#include "tests/desktop/support/Deadline.h"

namespace lumatile::desktop {

/// Waits until `condition` holds. Meanwhile what arrives on the message bus is handled, and the
/// events of every X client in this process.
/// @return false when it does not hold at the deadline
bool waitInSession(const std::function<bool()>& condition, Deadline deadline = Deadline::usual());

}  // namespace lumatile::desktop
