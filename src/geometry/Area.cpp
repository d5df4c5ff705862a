#include "geometry/Area.h"

#include <cstdint>
#include <utility>

namespace lumatile {

Area::Area(const CellRect& cell) : segments{cell} {}

Area::Area(std::vector<CellRect> cells) : segments(std::move(cells)) {}

CellRect Area::firstSegment() const { return segments.empty() ? CellRect{} : segments.front(); }

}  // namespace lumatile

std::size_t std::hash<lumatile::Area>::operator()(const lumatile::Area& area) const noexcept {
    std::size_t seed = area.segments.size();
    const auto mix = [&seed](std::int64_t value) {
        // The golden-ratio step of the usual hash combination, which keeps the order significant.
        seed ^=
            std::hash<std::int64_t>{}(value) + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2);
    };
    for (const lumatile::CellRect& cell : area.segments) {
        mix(cell.ox);
        mix(cell.oy);
        mix(cell.w);
        mix(cell.h);
    }
    return seed;
}
