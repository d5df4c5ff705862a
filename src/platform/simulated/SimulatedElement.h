#pragma once

#include <compare>
#include <cstddef>
#include <utility>
#include <variant>

#include "platform/simulated/SimulatedWindow.h"
#include "windows/AccessibilityPlatform.h"
#include "windows/Element.h"

namespace lumatile {

/// What knows the focus of the whole session.
struct SystemWideSubject {
    auto operator<=>(const SystemWideSubject&) const = default;
};

/// An application, by its process where that is known.
struct ProcessSubject {
    Pid pid = 0;

    auto operator<=>(const ProcessSubject&) const = default;
};

/// A part of a window's content.
struct PartSubject {
    WindowID window{};
    std::size_t index = 0;

    auto operator<=>(const PartSubject&) const = default;
};

/// What an element stands for. An application without a known process stands for itself.
using SimulatedSubject =
    std::variant<SystemWideSubject, ProcessSubject, ApplicationID, WindowID, PartSubject>;

/// A handle on a subject; it stays valid when the subject is gone.
class SimulatedElement final : public ElementHandle {
public:
    explicit SimulatedElement(SimulatedSubject subject) : subject_(subject) {}

    const SimulatedSubject& subject() const { return subject_; }

    bool equals(const ElementHandle& other) const override;
    std::size_t hash() const override;

private:
    SimulatedSubject subject_;
};

}  // namespace lumatile
