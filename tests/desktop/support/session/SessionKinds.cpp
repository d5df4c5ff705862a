#include "tests/desktop/support/session/SessionKinds.h"

#include <ostream>

#include "tests/desktop/support/session/KWinSessionDesk.h"
#include "tests/desktop/support/session/X11SessionDesk.h"

namespace lumatile::desktop {

const std::vector<SessionKind>& sessionKinds() {
    static const std::vector<SessionKind> all = [] {
        std::vector<SessionKind> result;
        for (const WindowManager::Kind kind : WindowManager::kinds) {
            result.push_back({toString(kind), X11SessionDesk::windowKinds(),
                              X11SessionDesk::titledKinds(), false,
                              [kind](const SessionDesk::Setup& setup) {
                                  return std::make_unique<X11SessionDesk>(kind, setup);
                              }});
        }
        result.push_back({"plasma", KWinSessionDesk::windowKinds(), KWinSessionDesk::windowKinds(),
                          true, [](const SessionDesk::Setup& setup) {
                              return std::make_unique<KWinSessionDesk>(setup);
                          }});
        return result;
    }();
    return all;
}

std::ostream& operator<<(std::ostream& stream, const SessionKind& kind) {
    return stream << kind.name;
}

std::string nameOfSession(const testing::TestParamInfo<SessionKind>& kind) {
    return kind.param.name;
}

}  // namespace lumatile::desktop
