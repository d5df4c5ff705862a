#pragma once

#include <optional>
#include <string>

namespace lumatile {

/// Port: whether the user's session starts this program at login.
class LoginItem {
public:
    enum class Status {
        notRegistered,
        enabled,           ///< The session starts it.
        requiresApproval,  ///< Registered, but switched off by the user or the session.
        notFound,          ///< Registered, but what is registered cannot be started.
    };

    virtual ~LoginItem() = default;

    /// As it is now, also after another program has changed it.
    virtual Status status() = 0;

    /// @return why it could not be registered; absent when it was
    virtual std::optional<std::string> registerItem() = 0;

    /// @return why it could not be unregistered; absent when it was, or was not registered
    virtual std::optional<std::string> unregisterItem() = 0;
};

}  // namespace lumatile
