#pragma once

#include <set>
#include <string>
#include <vector>

#include "hotkeys/HotKeyPlatform.h"

namespace lumatile {

class KeyCodes;
class SystemLog;

/// Says in the log which shortcuts belong to other programs: in one line when some are refused, at
/// the start or later, and in one when some of those are had at last. As long as nothing changes it
/// says nothing.
class RefusedShortcutLog {
public:
    /// @param log and `keyCodes` outlive this
    RefusedShortcutLog(SystemLog& log, KeyCodes& keyCodes) : log_(log), keyCodes_(keyCodes) {}

    struct Refused {
        KeyCombination combination;
        std::string holder;  ///< As the user knows it; empty: not known.
    };

    /// Takes note of what became of the shortcuts when all of them were registered. One that is
    /// neither refused nor held is not wanted any more, and nothing is said about it.
    void note(const std::vector<Refused>& refused, const std::set<KeyCombination>& held);

private:
    SystemLog& log_;
    KeyCodes& keyCodes_;
    std::set<KeyCombination> told_;  // Refused, as the log has it.
};

}  // namespace lumatile
