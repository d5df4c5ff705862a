#include "Lumatile/launch/SessionChoice.h"

#include "Lumatile/MainTexts.h"
#include "ports/SystemLog.h"

namespace lumatile {

std::unique_ptr<PresentSession> firstPresent(std::span<const SessionKind> kinds, SystemLog& log) {
    for (const SessionKind& kind : kinds) {
        if (auto present = kind.find()) {
            for (const std::string& shortcoming : present->facts().shortcomings) {
                log.write(MainTexts::program, shortcoming);
            }
            return present;
        }
    }
    for (const SessionKind& kind : kinds) {
        log.write(MainTexts::program, kind.absence);
    }
    return nullptr;
}

}  // namespace lumatile
