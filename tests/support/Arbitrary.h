#pragma once

#include <cmath>
#include <cstdint>

#include <rapidcheck.h>

#include "geometry/Area.h"
#include "geometry/Orientation.h"
#include "geometry/Rect.h"

namespace lumatile::arbitrary {

/// Numbers with three decimals, most of which no double holds exactly.
inline rc::Gen<double> number(int from, int to) {
    return rc::gen::map(rc::gen::inRange(from * 1000, to * 1000),
                        [](int thousandths) { return thousandths / 1000.0; });
}

/// Rectangles where screens and windows may lie, of positive size.
inline rc::Gen<Rect> rect() {
    return rc::gen::build<Rect>(
        rc::gen::set(&Rect::x, number(-8000, 8000)), rc::gen::set(&Rect::y, number(-8000, 8000)),
        rc::gen::set(&Rect::width, number(1, 8000)), rc::gen::set(&Rect::height, number(1, 8000)));
}

/// Blocks of at least one cell that stay within the smaller side of both grids.
inline rc::Gen<CellRect> cellRect() {
    return rc::gen::build<CellRect>(
        rc::gen::set(&CellRect::ox, rc::gen::inRange<std::int64_t>(0, 6)),
        rc::gen::set(&CellRect::oy, rc::gen::inRange<std::int64_t>(0, 6)),
        rc::gen::set(&CellRect::w, rc::gen::inRange<std::int64_t>(1, 7)),
        rc::gen::set(&CellRect::h, rc::gen::inRange<std::int64_t>(1, 7)));
}

inline rc::Gen<Area> area() {
    return rc::gen::map(rc::gen::container<std::vector<CellRect>>(cellRect()),
                        [](const std::vector<CellRect>& cells) { return Area(cells); });
}

inline rc::Gen<Orientation> orientation() {
    return rc::gen::element(Orientation::horizontal, Orientation::vertical);
}

}  // namespace lumatile::arbitrary
