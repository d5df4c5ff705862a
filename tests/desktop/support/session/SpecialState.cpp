#include "tests/desktop/support/session/SpecialState.h"

#include <ostream>

namespace lumatile::desktop {

std::ostream& operator<<(std::ostream& stream, SpecialState state) {
    switch (state) {
        case SpecialState::maximized:
            return stream << "maximized";
        case SpecialState::maximizedVertically:
            return stream << "maximizedVertically";
        case SpecialState::maximizedHorizontally:
            return stream << "maximizedHorizontally";
        case SpecialState::tiled:
            return stream << "tiled";
        case SpecialState::shaded:
            return stream << "shaded";
        case SpecialState::minimized:
            return stream << "minimized";
        case SpecialState::fullScreen:
            return stream << "fullScreen";
    }
    return stream;
}

}  // namespace lumatile::desktop
