#include "Lumatile/RefusedShortcutLog.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Lumatile/MainTexts.h"
#include "Lumatile/ShortcutWords.h"
#include "ports/KeyCodes.h"
#include "ports/SystemLog.h"

namespace lumatile {

void RefusedShortcutLog::note(const std::vector<Refused>& refused,
                              const std::set<KeyCombination>& held) {
    std::vector<Refused> lost;
    std::set<KeyCombination> told;
    for (const Refused& each : refused) {
        told.insert(each.combination);
        if (!told_.contains(each.combination)) {
            lost.push_back(each);
        }
    }
    std::vector<KeyCombination> had;
    std::set_intersection(told_.begin(), told_.end(), held.begin(), held.end(),
                          std::back_inserter(had));
    told_ = std::move(told);
    if (lost.empty() && had.empty()) {
        return;
    }
    const ShortcutWords::KeyLegends legends = keyCodes_.legends();
    const auto name = [&legends](const KeyCombination& combination) {
        return ShortcutWords::of({combination.keyCode, combination.modifiers, true}, legends);
    };
    std::vector<std::string> texts;
    std::transform(lost.begin(), lost.end(), std::back_inserter(texts),
                   [&name](const Refused& each) {
                       return MainTexts::refusedShortcut(name(each.combination), each.holder);
                   });
    if (!texts.empty()) {
        log_.write(MainTexts::program, MainTexts::refusedShortcuts(texts));
    }
    texts.clear();
    std::transform(had.begin(), had.end(), std::back_inserter(texts), name);
    if (!texts.empty()) {
        log_.write(MainTexts::program, MainTexts::freedShortcuts(texts));
    }
}

}  // namespace lumatile
