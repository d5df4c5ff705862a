#include "tests/desktop/support/shifting/SessionEnvironment.h"

#include <stdlib.h>

namespace lumatile::desktop {

SessionEnvironment::SessionEnvironment(const PrivateSession& session) {
    for (const char* name :
         {"DBUS_SESSION_BUS_ADDRESS", "WAYLAND_DISPLAY", "XDG_RUNTIME_DIR", "XDG_SESSION_TYPE"}) {
        const char* const before = getenv(name);
        before_[name] = before != nullptr ? std::optional<std::string>(before) : std::nullopt;
        setenv(name, session.environment().at(name).c_str(), 1);
    }
}

SessionEnvironment::~SessionEnvironment() {
    for (const auto& [name, value] : before_) {
        if (value) {
            setenv(name.c_str(), value->c_str(), 1);
        } else {
            unsetenv(name.c_str());
        }
    }
}

}  // namespace lumatile::desktop
