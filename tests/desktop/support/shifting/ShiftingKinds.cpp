#include <ostream>

#include "tests/desktop/support/shifting/KWinShiftingDesk.h"
#include "tests/desktop/support/shifting/ShiftingDesk.h"
#include "tests/desktop/support/shifting/X11ShiftingDesk.h"

namespace lumatile::desktop {

const std::vector<ShiftingKind>& shiftingKinds() {
    static const std::vector<ShiftingKind> all = [] {
        std::vector<ShiftingKind> result;
        for (const WindowManager::Kind kind : WindowManager::kinds) {
            result.push_back({toString(kind), [kind](const ShiftingDesk::Setup& setup) {
                                  return std::make_unique<X11ShiftingDesk>(kind, setup);
                              }});
        }
        result.push_back({"plasma", [](const ShiftingDesk::Setup& setup) {
                              return std::make_unique<KWinShiftingDesk>(setup);
                          }});
        return result;
    }();
    return all;
}

std::ostream& operator<<(std::ostream& stream, const ShiftingKind& kind) {
    return stream << kind.name;
}

}  // namespace lumatile::desktop
