#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "windows/AttributeValue.h"
#include "windows/Element.h"
#include "windows/PlacingWish.h"

namespace lumatile {

/// The writes of "AXPosition" and "AXSize": those of one window joined to one change, and those of
/// many windows put off until they can go together, where that is asked for.
class PlacingWrites {
public:
    struct Placement {
        Element window;
        PlacingWish wish;
    };

    /// Places windows, each of them once.
    /// @return false when one did not come to be there
    using Place = std::function<bool(const std::vector<Placement>& placements)>;

    /// @param farthest largest number, either sign, that the display system can be asked for
    PlacingWrites(double farthest, Place place) : farthest_(farthest), place_(std::move(place)) {}

    /// Joins the writes to this window from now on; carries out what was joined before, unless a
    /// batch holds it.
    void begin(const Element& window);

    /// Carries out what was joined, unless a batch holds it, and joins no more.
    void end();

    /// Puts off the writes to all windows from now on.
    void beginBatch() { isBatch_ = true; }

    /// Carries out what was put off, together, and puts off no more.
    void endBatch();

    /// Carries out what was put off so far; for whoever is about to look at windows.
    void carryOut();

    /// The same for whoever is about to look at this window: where nothing is put off for it, the
    /// rest can wait.
    void carryOut(const Element& window);

    /// @return false for other attributes, other values, numbers that are not finite or too large,
    ///         and what could not be placed; true for what is put off
    bool write(const Element& window, std::string_view attribute, const AttributeValue& value);

private:
    PlacingWish wishFor(std::string_view attribute, const AttributeValue& value) const;
    std::vector<Placement>::iterator find(const Element& window);
    bool isJoined(const Element& window) const;

    double farthest_;
    Place place_;
    Element joined_;
    bool isBatch_ = false;
    std::vector<Placement> putOff_;  // One for each window.
};

}  // namespace lumatile
