#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "platform/x11/X11GammaRamp.h"

namespace lumatile {

/// The ramps of the screens before they were dimmed, by the server's number of the controller that
/// shows them; and the form in which they lie in a property of the root window, as 32-bit items: a
/// version, then for each controller its number, the size of the ramp, and the steps in pairs, the
/// first of a pair in the lower half.
struct X11KeptRamps {
    /// More controllers than any server has.
    static constexpr std::size_t mostControllers = 64;

    /// Bound on the length of the property, in items.
    static constexpr std::uint32_t longestForm =
        1 + mostControllers * (2 + (X11GammaRamp::channels * X11GammaRamp::largestSize + 1) / 2);

    std::map<std::uint32_t, X11GammaRamp> ramps;

    bool operator==(const X11KeptRamps&) const = default;

    /// In pieces to be appended to one another, none longer than one ramp needs: the server limits
    /// the length of a request.
    /// @return nothing for more than `mostControllers`, or a ramp that is empty or too large
    std::optional<std::vector<std::vector<std::uint32_t>>> encoded() const;

    /// @param items from a property that anybody may have written
    /// @return nothing unless all of it is right
    static std::optional<X11KeptRamps> decoded(std::span<const std::uint32_t> items);
};

}  // namespace lumatile
