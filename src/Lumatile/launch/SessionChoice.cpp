#include "Lumatile/launch/SessionChoice.h"

#include "Lumatile/MainTexts.h"
#include "ports/SystemLog.h"

namespace lumatile {

std::unique_ptr<PresentSession> firstPresent(std::span<const SessionKind> kinds, SystemLog& log) {
    for (const SessionKind& kind : kinds) {
        if (auto present = kind.find()) {
            return present;
        }
    }
    for (const SessionKind& kind : kinds) {
        log.write(MainTexts::program, kind.absence);
    }
    return nullptr;
}

void sayShortcomings(const SessionFacts& facts, SystemLog& log) {
    for (const std::string& shortcoming : facts.shortcomings) {
        log.write(MainTexts::program, shortcoming);
    }
}

}  // namespace lumatile
