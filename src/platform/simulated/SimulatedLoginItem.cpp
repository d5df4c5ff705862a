#include "platform/simulated/SimulatedLoginItem.h"

namespace lumatile {

std::optional<std::string> SimulatedLoginItem::registerItem() {
    if (!reason_.empty()) {
        return reason_;
    }
    status_ = needsApproval_ ? Status::requiresApproval : Status::enabled;
    return std::nullopt;
}

std::optional<std::string> SimulatedLoginItem::unregisterItem() {
    if (!reason_.empty()) {
        return reason_;
    }
    status_ = Status::notRegistered;
    return std::nullopt;
}

}  // namespace lumatile
