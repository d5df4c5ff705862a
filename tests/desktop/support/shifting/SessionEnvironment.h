#pragma once

#include <map>
#include <optional>
#include <string>

#include "tests/desktop/support/PrivateSession.h"

namespace lumatile::desktop {

/// Puts this process itself into a private session, as far as adapters look at the environment:
/// message bus, compositor, run-time folder. Ends with this object.
class SessionEnvironment {
public:
    explicit SessionEnvironment(const PrivateSession& session);
    SessionEnvironment(const SessionEnvironment&) = delete;
    SessionEnvironment& operator=(const SessionEnvironment&) = delete;
    ~SessionEnvironment();

private:
    std::map<std::string, std::optional<std::string>> before_;
};

}  // namespace lumatile::desktop
