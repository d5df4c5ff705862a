#include "platform/kwin/KWinElement.h"

#include <functional>

namespace lumatile {

bool KWinElement::equals(const ElementHandle& other) const {
    const auto* element = dynamic_cast<const KWinElement*>(&other);
    return element != nullptr && element->kind_ == kind_ && element->pid_ == pid_ &&
           element->id_ == id_;
}

std::size_t KWinElement::hash() const {
    return std::hash<std::string>()(id_) ^ std::hash<Pid>()(pid_) ^ static_cast<std::size_t>(kind_);
}

}  // namespace lumatile
