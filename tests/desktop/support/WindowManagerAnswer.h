#pragma once

#include "tests/desktop/support/XClient.h"

namespace lumatile::desktop {

/// Waits until the window manager has carried out what `client` asked of it before. The properties
/// by which it states a new state may come before the state: it restacks or moves afterwards. It
/// answers in the order in which it is asked, so an answer to a later question is behind both.
/// @throws DesktopError when it does not answer
void waitForWindowManager(XClient& client);

}  // namespace lumatile::desktop
