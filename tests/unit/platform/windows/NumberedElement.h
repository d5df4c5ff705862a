#pragma once

#include <cstddef>
#include <memory>

#include "windows/Element.h"

namespace lumatile {

/// An element that is told from others by a number.
class NumberedElement final : public ElementHandle {
public:
    static Element of(int number) { return std::make_shared<NumberedElement>(number); }

    explicit NumberedElement(int number) : number_(number) {}

    int number() const { return number_; }

    bool equals(const ElementHandle& other) const override {
        const auto* numbered = dynamic_cast<const NumberedElement*>(&other);
        return numbered != nullptr && numbered->number_ == number_;
    }
    std::size_t hash() const override { return static_cast<std::size_t>(number_); }

private:
    int number_;
};

/// 0 for an element of another kind.
inline int numberOf(const Element& element) {
    const auto* numbered = dynamic_cast<const NumberedElement*>(element.get());
    return numbered != nullptr ? numbered->number() : 0;
}

}  // namespace lumatile
