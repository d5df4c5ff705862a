#include "platform/windows/PlacingWrites.h"

#include <utility>

#include "platform/windows/RoundedEdges.h"
#include "windows/AttributeName.h"

namespace lumatile {

void PlacingWrites::begin(const Element& window) {
    end();
    joined_ = Joined{window, {}};
}

void PlacingWrites::end() {
    carryOut();
    joined_.reset();
}

void PlacingWrites::carryOut() {
    if (joined_ && !joined_->wish.isEmpty()) {
        // Copies: placing may turn over a connection, and whoever is called meanwhile may end it.
        const Element window = joined_->window;
        place_(window, std::exchange(joined_->wish, {}));
    }
}

bool PlacingWrites::write(const Element& window, std::string_view attribute,
                          const AttributeValue& value) {
    const PlacingWish wish = wishFor(attribute, value);
    if (wish.isEmpty()) {
        return false;
    }
    if (joined_ && window->equals(*joined_->window)) {
        joined_->wish = joined_->wish.followedBy(wish);
        return true;
    }
    carryOut();
    return place_(window, wish);
}

PlacingWish PlacingWrites::wishFor(std::string_view attribute, const AttributeValue& value) const {
    const auto isInReach = [this](double number) {
        return roundedEdge(number, farthest_).has_value();
    };
    PlacingWish wish;
    const Point* position = std::get_if<Point>(&value);
    if (position != nullptr && attribute == AttributeName::position && isInReach(position->x) &&
        isInReach(position->y)) {
        wish.position = *position;
    }
    const Size* size = std::get_if<Size>(&value);
    if (size != nullptr && attribute == AttributeName::size && isInReach(size->width) &&
        isInReach(size->height)) {
        wish.size = *size;
    }
    return wish;
}

}  // namespace lumatile
