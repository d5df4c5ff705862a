#include "commands/Segment.h"

namespace lumatile {

std::optional<CellRect> cellRect(const Segment& segment) {
    if (segment.size() != 4) {
        return std::nullopt;
    }
    return CellRect{segment[0], segment[1], segment[2], segment[3]};
}

Area areaOf(const std::vector<Segment>& segments) {
    Area area;
    area.segments.reserve(segments.size());
    for (const Segment& segment : segments) {
        if (const auto cell = cellRect(segment)) {
            area.segments.push_back(*cell);
        }
    }
    return area;
}

}  // namespace lumatile
