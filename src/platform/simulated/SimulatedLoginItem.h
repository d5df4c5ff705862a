#pragma once

#include <optional>
#include <string>
#include <utility>

#include "ports/LoginItem.h"

namespace lumatile {

/// The session's list of what it starts at login, with a user and a disk that may refuse.
class SimulatedLoginItem final : public LoginItem {
public:
    Status status() override { return status_; }
    std::optional<std::string> registerItem() override;
    std::optional<std::string> unregisterItem() override;

    /// Another program, or the user in the session's settings, changes the list.
    void setStatus(Status status) { status_ = status; }

    /// From now on a registration waits for the user's approval.
    void setNeedsApproval(bool needs) { needsApproval_ = needs; }

    /// From now on nothing can be changed, for this reason; an empty one ends that.
    void refuse(std::string reason) { reason_ = std::move(reason); }

private:
    Status status_ = Status::notRegistered;
    bool needsApproval_ = false;
    std::string reason_;
};

}  // namespace lumatile
