#include "platform/wayland/IdleNotifier.h"

#include <ext-idle-notify-v1-client-protocol.h>
#include <idle-client-protocol.h>

namespace lumatile {

IdleNotifier IdleNotifier::of(WaylandConnection& connection) {
    IdleNotifier result;
    result.common = connection.bindFirst<ext_idle_notifier_v1>(ext_idle_notifier_v1_interface, 1);
    if (!result.common) {
        result.older = connection.bindFirst<org_kde_kwin_idle>(org_kde_kwin_idle_interface, 1);
    }
    return result;
}

}  // namespace lumatile
