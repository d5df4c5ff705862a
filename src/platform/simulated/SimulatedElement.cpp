#include "platform/simulated/SimulatedElement.h"

#include <functional>
#include <type_traits>

namespace lumatile {

bool SimulatedElement::equals(const ElementHandle& other) const {
    const auto* element = dynamic_cast<const SimulatedElement*>(&other);
    return element && element->subject_ == subject_;
}

std::size_t SimulatedElement::hash() const {
    const std::size_t value = std::visit(
        [](const auto& subject) -> std::size_t {
            using Subject = std::decay_t<decltype(subject)>;
            if constexpr (std::is_same_v<Subject, SystemWideSubject>) {
                return 0;
            } else if constexpr (std::is_same_v<Subject, ProcessSubject>) {
                return std::hash<Pid>()(subject.pid);
            } else if constexpr (std::is_same_v<Subject, PartSubject>) {
                return std::hash<WindowID>()(subject.window) * 31 + subject.index;
            } else {
                return std::hash<Subject>()(subject);
            }
        },
        subject_);
    return value * 8 + subject_.index();
}

}  // namespace lumatile
