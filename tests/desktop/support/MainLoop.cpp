#include "tests/desktop/support/MainLoop.h"

#include <glib.h>

#include "tests/desktop/support/Deadline.h"

namespace lumatile::desktop {

bool runUntil(const std::function<bool()>& holds) {
    const Deadline deadline = Deadline::usual();
    constexpr int longest = 60000;
    // Ends the wait for an event that never comes.
    const guint timer = g_timeout_add(
        static_cast<guint>(deadline.milliseconds(longest)),
        [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
    while (!holds() && !deadline.isOver()) {
        g_main_context_iteration(nullptr, TRUE);
    }
    g_source_remove(timer);
    return holds();
}

void runReady() {
    while (g_main_context_iteration(nullptr, FALSE) != 0) {
    }
}

}  // namespace lumatile::desktop
