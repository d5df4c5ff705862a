#pragma once

#include <cstdint>
#include <string>

namespace lumatile::benchmark {

/// Something measured, beside what is wanted of it.
struct Figure {
    enum class Bound : std::uint8_t { atMost, atLeast };

    std::string name;
    double measured = 0;
    double wanted = 0;
    Bound bound = Bound::atMost;

    /// False as well for what is not a number.
    bool holds() const { return bound == Bound::atMost ? measured <= wanted : measured >= wanted; }
};

}  // namespace lumatile::benchmark
