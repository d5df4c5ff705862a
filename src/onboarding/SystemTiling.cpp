#include "onboarding/SystemTiling.h"

namespace lumatile {

SystemTiling SystemTiling::read(int majorVersion, const Lookup& lookup) {
    if (majorVersion < firstMajorVersion) {
        return {};
    }
    return {lookup(edgeDragKey).value_or(true), lookup(menuBarDragKey).value_or(true)};
}

}  // namespace lumatile
