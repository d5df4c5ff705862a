#include "geometry/GridSize.h"

namespace lumatile {

GridSize GridSize::of(Orientation orientation) {
    return orientation == Orientation::vertical ? GridSize{12, 24} : GridSize{24, 12};
}

}  // namespace lumatile
