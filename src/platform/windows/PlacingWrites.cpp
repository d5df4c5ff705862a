#include "platform/windows/PlacingWrites.h"

#include <algorithm>
#include <utility>

#include "platform/windows/RoundedEdges.h"
#include "windows/AttributeName.h"

namespace lumatile {

void PlacingWrites::begin(const Element& window) {
    end();
    joined_ = window;
}

void PlacingWrites::end() {
    if (!isBatch_) {
        carryOut();
    }
    joined_.reset();
}

void PlacingWrites::endBatch() {
    isBatch_ = false;
    carryOut();
}

void PlacingWrites::carryOut() {
    // Placing may turn over a connection, and whoever is called meanwhile may come back here.
    if (const auto placements = std::exchange(putOff_, {}); !placements.empty()) {
        place_(placements);
    }
}

void PlacingWrites::carryOut(const Element& window) {
    if (find(window) != putOff_.end()) {
        carryOut();
    }
}

bool PlacingWrites::write(const Element& window, std::string_view attribute,
                          const AttributeValue& value) {
    const PlacingWish wish = wishFor(attribute, value);
    if (wish.isEmpty()) {
        return false;
    }
    if (!isBatch_ && !isJoined(window)) {
        carryOut();
        return place_({{window, wish}});
    }
    if (const auto found = find(window); found != putOff_.end()) {
        found->wish = found->wish.followedBy(wish);
    } else {
        putOff_.push_back({window, wish});
    }
    return true;
}

std::vector<PlacingWrites::Placement>::iterator PlacingWrites::find(const Element& window) {
    return std::find_if(putOff_.begin(), putOff_.end(), [&window](const Placement& placement) {
        return placement.window->equals(*window);
    });
}

bool PlacingWrites::isJoined(const Element& window) const {
    return joined_ && joined_->equals(*window);
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
