#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "geometry/Area.h"
#include "geometry/CellRect.h"

namespace lumatile {

/// A block of cells as it is stored: ox, oy, w, h. A stored list may hold any number of integers;
/// it is kept as it came, so that writing it back loses nothing.
using Segment = std::vector<std::int64_t>;

/// The block of a segment; absent unless it holds exactly four integers.
std::optional<CellRect> cellRect(const Segment& segment);

/// The area of all segments that hold exactly four integers. The others are left out: nothing ever
/// writes one, and a guess at what it meant would place windows at random.
Area areaOf(const std::vector<Segment>& segments);

}  // namespace lumatile
