#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "windows/AttributeValue.h"
#include "windows/Element.h"
#include "windows/PlacingWish.h"

namespace lumatile {

/// The writes of "AXPosition" and "AXSize", those of one window joined to one change where that is
/// asked for.
class PlacingWrites {
public:
    /// Places a window.
    /// @return false when it did not come to be there
    using Place = std::function<bool(const Element& window, const PlacingWish& wish)>;

    /// @param farthest largest number, either sign, that the display system can be asked for
    PlacingWrites(double farthest, Place place) : farthest_(farthest), place_(std::move(place)) {}

    /// Joins the writes to this window from now on; carries out what was joined before.
    void begin(const Element& window);

    /// Carries out what was joined, and joins no more.
    void end();

    /// Carries out what was joined so far; for whoever is about to look at windows.
    void carryOut();

    /// @return false for other attributes, other values, numbers that are not finite or too large,
    ///         and what could not be placed; true for what is joined
    bool write(const Element& window, std::string_view attribute, const AttributeValue& value);

private:
    struct Joined {
        Element window;
        PlacingWish wish;
    };

    PlacingWish wishFor(std::string_view attribute, const AttributeValue& value) const;

    double farthest_;
    Place place_;
    std::optional<Joined> joined_;
};

}  // namespace lumatile
